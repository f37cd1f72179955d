// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Colours that a file describes by numbers: as a profile, so that nothing else need know of the numbers. Any
// thread.
#pragma once

#include "pixels/row_reader.h"
#include "pixels/vips_library.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace lumora {

struct Chromaticity // of CIE 1931
{
    double x;
    double y;
};

struct Primaries
{
    Chromaticity white;
    Chromaticity red;
    Chromaticity green;
    Chromaticity blue;
};

inline constexpr Primaries srgbPrimaries{{0.3127, 0.3290}, {0.64, 0.33}, {0.30, 0.60}, {0.15, 0.06}};
inline constexpr Primaries adobeRgbPrimaries{{0.3127, 0.3290}, {0.64, 0.33}, {0.21, 0.71}, {0.15, 0.06}};

// How components become light.
enum class Transfer {
    srgb,
    power, // with the exponent of the description
    // The two of pictures with highlights brighter than white. Light up to 0.6 of white stays as it is, what
    // is above is pressed together below the white of an ordinary picture.
    perceptualQuantizer,
    hybridLogGamma,
};

struct ColorDescription
{
    Primaries primaries = srgbPrimaries;
    Transfer transfer = Transfer::srgb;
    double exponent = 2.2;
};

// Of a plain power; 2.2 with the primaries of sRGB is what programs that mean sRGB write.
ColorDescription colorsOfPower(const Primaries& primaries, double exponent);

// By the code points of ITU-T H.273. Unspecified ones mean sRGB's; the curves of television are taken for
// that of sRGB, as screens show them. Absent for reserved codes and for those that are no picture's.
std::optional<ColorDescription> colorsOfCodes(unsigned primaries, unsigned transfer);

// Empty for sRGB, as near as 8 bits tell. Absent when the numbers make no sense.
std::optional<std::vector<std::uint8_t>> profileOf(const ColorDescription& colors, ColorModel model);

// The picture with the profile of these colours in place of any other, without one when they are sRGB; as it
// is when they make no sense.
VipsImagePtr withColors(VipsImagePtr image, const ColorDescription& colors);
// The same for a picture that has no profile yet.
void attachColors(_VipsImage* image, const ColorDescription& colors);

} // namespace lumora
