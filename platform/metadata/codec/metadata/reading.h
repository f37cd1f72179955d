// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata on its way in. Damaged metadata is no damage to the picture: it means fewer fields. Any thread;
// nothing here throws.
#pragma once

#include "metadata/metadata.h"

#include <string_view>

namespace lumora {

// The fields and the XMP packet of an open JPEG, PNG, TIFF or WebP file, whose position stays where it is.
void readContainer(int descriptor, Metadata& metadata) noexcept;

// The same of containers that others have opened: an EXIF block with or without its prefix, and a packet;
// either may be empty.
void readBlocks(std::string_view exif, std::string_view xmp, Metadata& metadata) noexcept;

} // namespace lumora
