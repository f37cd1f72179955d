// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How the first picture of a TIFF file is stored, and who reads it rightly. Pure but for the file; any
// thread.
#pragma once

#include "tiff/tiff_file.h"

#include <cstdint>
#include <optional>

namespace lumora {

enum class TiffRoad {
    samples, // as stored, by our own scaling
    colors,  // by the TIFF library's conversion to 8-bit RGB
    library, // by the image library
};

enum class TiffSample { natural, integer, real }; // unsigned, signed, floating point

struct TiffLayout
{
    TiffRoad road;
    int width;
    int height;
    int bits; // a sample
    TiffSample sample;
    int samples; // a pixel
    int colors;  // those of them that are no alpha and no extra: 1, 3 or 4
    bool isPlanar;
    bool isTiled;
    bool hasPalette;
    bool isInverted;      // white is 0
    bool isPremultiplied; // the first sample after the colours is alpha, and they are mixed with it
};

// Nothing for a picture that nobody reads rightly.
std::optional<TiffLayout> tiffLayout(const TiffFile& file);

} // namespace lumora
