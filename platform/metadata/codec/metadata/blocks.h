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

#include <cstddef>
#include <limits>
#include <string>
#include <vector>

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

// The TIFF file with all three inside; the file as it is when that fails.
std::vector<std::byte> withTiffMetadata(std::vector<std::byte> tiff, const Metadata& metadata,
                                        const PictureFacts& facts);

} // namespace lumora
