// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata on its way out: the blocks that containers embed, each empty where there is nothing to say. Pixel
// dimensions and colour space are brought up to date. Orientation, embedded previews, the layout of the
// source's own pixels and claims of further images in the file (gain maps) are left out: every picture that
// is written stands upright and alone. A field that cannot be written costs only itself, a block that cannot
// be made counts as empty. Any thread; throws std::bad_alloc and nothing else.
#pragma once

#include "metadata/metadata.h"
#include "metadata/picture_facts.h"
#include "metadata/split_xmp.h"
#include "system/result.h"

#include <cstddef>
#include <functional>
#include <limits>
#include <span>
#include <string>

namespace lumora {

// A TIFF structure, without any container's prefix. A camera maker's note that would make it longer than
// `longest` bytes is left out.
std::string exifBlock(const Metadata& metadata, const PictureFacts& facts,
                      std::size_t longest = std::numeric_limits<std::size_t>::max());
// An image resource block that holds the IPTC records.
std::string iptcBlock(const Metadata& metadata);
std::string xmpPacket(const Metadata& metadata, const PictureFacts& facts);

// The same in two parts where it is longer than `longest` bytes.
SplitXmp splitXmpPacket(const Metadata& metadata, const PictureFacts& facts, std::size_t longest);

// Hands over the TIFF file with all three inside, once, and gives back what the taker says of it. Nothing is
// handed over where there is nothing to add or adding it fails: the file stays good as it is. The bytes given
// may change.
using FileTaker = std::function<Status(std::span<const std::byte> file)>;
Status withTiffMetadata(std::span<std::byte> tiff, const Metadata& metadata, const PictureFacts& facts,
                        const FileTaker& take);

} // namespace lumora
