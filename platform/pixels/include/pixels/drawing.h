// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture redrawn upright as 8-bit RGB, or RGBA with premultiplied alpha. Thread-safe for different
// pictures.
#pragma once

#include "pixels/image.h"
#include "system/result.h"

#include <cstdint>

namespace lumora {

enum class ColorSpace {
    sRGB,      // converted to sRGB, sRGB profile attached
    deviceRGB, // sRGB colours without a profile
    own,       // the picture's own RGB space with its profile; pictures that are not RGB count as deviceRGB
};

struct DrawRequest
{
    std::int64_t width; // in pixels of the upright result, at least 1
    std::int64_t height;
    ColorSpace colorSpace;
};

// Draws the whole picture, upright, at the requested size: Lanczos-3 reduction in the picture's own encoding
// of its components, then the colour conversion at the small size; deep colours under a profile and Lab are
// converted first, before their components are cut to 8 bits. The result has three bands, and a
// fourth where the picture has alpha, be every pixel opaque or not; its rows are made when they are first
// needed, out of those of the picture, and fail when the codec reports the data as truncated or damaged. A
// picture that was drawn so already comes back as it is. Fails where a header opened again turns out damaged,
// and with Cause::inconvertible when the picture is good and can be had as it is, but not in this size or
// these colours.
Result<Image> draw(const Image& image, const DrawRequest& request);

// For where nothing but a drawing can be stored: colours that cannot be converted are taken as they are.
Result<Image> drawRegardless(const Image& image, const DrawRequest& request);

} // namespace lumora
