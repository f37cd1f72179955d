// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How large a picture is meant to be on paper. For the metadata code only; any thread.
#pragma once

#include "metadata/metadata_blocks.h"

namespace lumora {

// What a PNG or a JFIF header says, as an entry of its group; the other formats' fields are EXIF.
void addDensity(ImageProperties& properties, _VipsImage* header, std::string_view typeIdentifier);

// From the density of a PNG, else from EXIF, else from a JFIF header; unknown when none of them is plausible.
// Throws Exiv2::Error and standard exceptions.
Resolution resolutionOf(const ImageProperties& properties);

} // namespace lumora
