// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_picture.h"

#include <libde265/de265.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lumora {
namespace {

struct Form
{
    heif_colorspace space;
    heif_chroma chroma;
    int planes;
};

Form formOf(de265_chroma chroma)
{
    switch (chroma) {
    case de265_chroma_mono:
        return {heif_colorspace_monochrome, heif_chroma_monochrome, 1};
    case de265_chroma_420:
        return {heif_colorspace_YCbCr, heif_chroma_420, 3};
    case de265_chroma_422:
        return {heif_colorspace_YCbCr, heif_chroma_422, 3};
    case de265_chroma_444:
        break;
    }
    return {heif_colorspace_YCbCr, heif_chroma_444, 3};
}

void copyPlane(const de265_image* decoded, int index, heif_image* picture, heif_channel channel)
{
    const int width = de265_get_image_width(decoded, index);
    const int height = de265_get_image_height(decoded, index);
    const int bits = de265_get_bits_per_pixel(decoded, index);
    checkHeif(heif_image_add_plane(picture, channel, width, height, bits));
    int fromStride = 0;
    const std::uint8_t* from = de265_get_image_plane(decoded, index, &fromStride);
    int toStride = 0;
    std::uint8_t* to = heif_image_get_plane(picture, channel, &toStride);
    const std::size_t rowBytes = static_cast<std::size_t>(width) * (bits > 8 ? 2 : 1);
    for (int y = 0; y < height; ++y, from += fromStride, to += toStride)
        std::memcpy(to, from, rowBytes);
}

// Numbers that the HEIF library does not know stay what it takes for granted.
void tellColors(const de265_image* decoded, heif_image* picture)
{
    const HeifCodePoints codes(heif_nclx_color_profile_alloc());
    if (!codes) throw outOfMemory();
    const auto number = [](int code) { return static_cast<std::uint16_t>(code); };
    heif_nclx_color_profile_set_color_primaries(codes.get(),
                                                number(de265_get_image_colour_primaries(decoded)));
    heif_nclx_color_profile_set_transfer_characteristics(
        codes.get(), number(de265_get_image_transfer_characteristics(decoded)));
    heif_nclx_color_profile_set_matrix_coefficients(codes.get(),
                                                    number(de265_get_image_matrix_coefficients(decoded)));
    codes->full_range_flag = static_cast<std::uint8_t>(de265_get_image_full_range_flag(decoded));
    checkHeif(heif_image_set_nclx_color_profile(picture, codes.get()));
}

} // namespace

HeifPicture heifPictureOf(const de265_image* decoded)
{
    constexpr std::array channels{heif_channel_Y, heif_channel_Cb, heif_channel_Cr};
    const Form form = formOf(de265_get_chroma_format(decoded));
    heif_image* made = nullptr;
    checkHeif(heif_image_create(de265_get_image_width(decoded, 0), de265_get_image_height(decoded, 0),
                                form.space, form.chroma, &made));
    HeifPicture picture(made);
    for (int i = 0; i < form.planes; ++i)
        copyPlane(decoded, i, made, channels.at(static_cast<std::size_t>(i)));
    tellColors(decoded, made);
    return picture;
}

} // namespace lumora
