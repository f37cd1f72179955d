// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Loading through the image library, the same for every format: rows in order, and a stop at damage.
#pragma once

#include "metadata/metadata.h"
#include "pixels/vips_library.h"
#include "system/result.h"

#include <vips/vips.h>

namespace lumora {

// A function of the image library that loads one format; the rest of its arguments are names and values.
using VipsLoad = int (*)(VipsSource* source, VipsImage** out, ...);

// As FormatReader::load.
Result<VipsImagePtr> loadStrictly(VipsLoad load, int descriptor);

// The EXIF block and the XMP packet that the image library hands on.
void readAttachedMetadata(VipsImage* image, Metadata& metadata);

} // namespace lumora
