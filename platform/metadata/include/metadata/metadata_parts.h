// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata as people speak of it, to say what of it a copy lacks. Any thread; throws std::bad_alloc.
#pragma once

#include "metadata/metadata.h"

#include <set>
#include <string_view>

namespace lumora {

enum class MetadataPart { exif, makerNote, iptc, xmp, comments, pngTexts, pngTime };

using MetadataParts = std::set<MetadataPart>;

// What a reader would miss in `copy`. What only describes how the pixels of a file lie in it, or speaks of
// further pictures in it, is not missed, nor is a resolution.
MetadataParts missingParts(const Metadata& original, const Metadata& copy);

// As it is shown: "EXIF".
std::string_view nameOf(MetadataPart part);

} // namespace lumora
