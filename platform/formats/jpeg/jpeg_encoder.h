// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A JPEG encoder of our own up to the coefficients, because the size of the file is what people come for:
// what the library makes of a picture takes a fifth more for the same look. docs/performance.md has the
// figures.
#pragma once

#include "jpeg/block_quantizer.h"
#include "jpeg/progressive_file.h"
#include "system/result.h"

#include <string_view>
#include <vector>

struct _VipsImage;

namespace lumora {

struct JpegRequest
{
    _VipsImage* image;                    // grey or RGB of 8 bits; its rows may be had once
    std::vector<ComponentCoding> codings; // one for each component
    bool hasFullChroma;
    std::string_view profile; // may be empty
};

// Takes the picture's rows once, from the top down, and holds nothing of it but what the file's scans will
// say. Any thread; throws std::bad_alloc.
Status encodeJpeg(const JpegRequest& request, const JpegTaker& take);

} // namespace lumora
