// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Turning a picture into pixels in memory: as it is, or redrawn into a new 8-bit RGBA bitmap with
// premultiplied alpha. Thread-safe for different pictures.
#pragma once

#include "pixels/draw_error.h"
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

// Draws the whole picture, upright, into a bitmap of the requested size: Lanczos-3 reduction in the picture's
// own encoding of its components, then the colour conversion at the small size. The result has four bands
// even where every pixel is opaque, and shares the pixels of a picture that was drawn so already. Fails when
// the codec reports the data as truncated or damaged. Decodes a pending picture, which can be done once.
Result<Image, DrawError> draw(const Image& image, const DrawRequest& request);

// For where nothing but a drawing can be stored: colours that cannot be converted are taken as they are.
Result<Image> drawRegardless(const Image& image, const DrawRequest& request);

// The upright picture in memory with its own depth, colour model and profile. Returns an image in memory as
// it is. Fails and decodes like draw().
Result<Image> decode(const Image& image);

} // namespace lumora
