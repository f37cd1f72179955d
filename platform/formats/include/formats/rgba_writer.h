// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pixels as a viewer takes them: rows of 8-bit RGBA in sRGB, premultiplied, with nothing around them. Any
// thread.
#pragma once

#include "pixels/image.h"
#include "records/picture_part.h"
#include "system/output_file.h"
#include "system/result.h"

#include <cstdint>

namespace lumora {

// Whether there is such a part of a picture of this size.
bool isPartOf(const PicturePart& part, std::int64_t width, std::int64_t height);

// Writes the part from its top down, as its rows come. Colours that cannot be converted are taken as they
// are.
Status writeRgba(const Image& image, const PicturePart& part, OutputFile& file);

} // namespace lumora
