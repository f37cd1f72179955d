// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures in memory without any file, and what is in them.
#pragma once

#include "pixels/image.h"
#include "pixels/vips_library.h"
#include "tests/support/sample_images.h"

#include <vips/vips.h>

namespace lumora::test {

// Of 1 or 2 bands gray, of 3 or 4 RGB, unless said otherwise.
inline VipsImagePtr pictureOf(const Pixels& pixels, VipsInterpretation meaning = VIPS_INTERPRETATION_ERROR)
{
    ensureVipsReady();
    if (meaning == VIPS_INTERPRETATION_ERROR)
        meaning = pixels.bands <= 2 ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB;
    const VipsImagePtr plain(vips_image_new_from_memory_copy(pixels.bytes.data(), pixels.bytes.size(),
                                                             pixels.width, pixels.height, pixels.bands,
                                                             VIPS_FORMAT_UCHAR));
    VipsImage* picture = nullptr;
    vips_copy(plain.get(), &picture, "interpretation", meaning, nullptr);
    return VipsImagePtr(picture);
}

inline Image imageOf(const Pixels& pixels, ImageState state = ImageState::decoded)
{
    return {pictureOf(pixels).release(), 1, state};
}

// Every row fails, as those of a damaged file do.
inline VipsImagePtr damagedPicture(int width, int height)
{
    ensureVipsReady();
    VipsImage* picture = vips_image_new();
    vips_image_init_fields(picture, width, height, 3, VIPS_FORMAT_UCHAR, VIPS_CODING_NONE,
                           VIPS_INTERPRETATION_sRGB, 1, 1);
    const VipsGenerateFn fail = [](VipsRegion*, void*, void*, void*, gboolean*) {
        vips_error("test", "damaged");
        return -1;
    };
    vips_image_pipelinev(picture, VIPS_DEMAND_STYLE_THINSTRIP, nullptr);
    vips_image_generate(picture, nullptr, fail, nullptr, nullptr, nullptr);
    return VipsImagePtr(picture);
}

// 8-bit components as they are, still as stored.
inline Pixels pixelsOf(VipsImage* picture)
{
    std::size_t size = 0;
    void* memory = vips_image_write_to_memory(picture, &size);
    const auto* first = static_cast<const std::uint8_t*>(memory);
    Pixels pixels{vips_image_get_width(picture), vips_image_get_height(picture),
                  vips_image_get_bands(picture), std::vector<std::uint8_t>(first, first + size)};
    g_free(memory);
    return pixels;
}

} // namespace lumora::test
