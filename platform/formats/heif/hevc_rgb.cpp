// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_rgb.h"

#include "pixels/vector_clones.h"

#include <libde265/de265.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora {
namespace {

// What the differences add to the brightness of each pixel of a row.
struct Added
{
    explicit Added(std::ptrdiff_t width)
        : red(roundedUp(width)), green(roundedUp(width)), blue(roundedUp(width))
    {
    }

    static std::size_t roundedUp(std::ptrdiff_t width) { return static_cast<std::size_t>(width + width % 2); }

    std::vector<float> red;
    std::vector<float> green;
    std::vector<float> blue;
};

LUMORA_VECTOR_CLONES void addedBy(const std::uint8_t* blues, const std::uint8_t* reds, std::ptrdiff_t count,
                                  float* __restrict red, float* __restrict green, float* __restrict blue)
{
    constexpr float none = 128;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const float towardsBlue = static_cast<float>(blues[i]) - none;
        const float towardsRed = static_cast<float>(reds[i]) - none;
        red[2 * i] = red[2 * i + 1] = 1.402F * towardsRed;
        green[2 * i] = green[2 * i + 1] = -0.344136F * towardsBlue - 0.714136F * towardsRed;
        blue[2 * i] = blue[2 * i + 1] = 1.772F * towardsBlue;
    }
}

LUMORA_VECTOR_CLONES void addTo(const std::uint8_t* brightness, const float* __restrict added,
                                std::ptrdiff_t width, std::uint8_t* __restrict color)
{
    constexpr float white = 255;
    for (std::ptrdiff_t i = 0; i < width; ++i) {
        const float rounded = static_cast<float>(brightness[i]) + added[i] + 0.5F;
        const float atLeastBlack = rounded < 0 ? 0 : rounded;
        color[i] = static_cast<std::uint8_t>(static_cast<int>(atLeastBlack > white ? white : atLeastBlack));
    }
}

struct Rows
{
    const std::uint8_t* first = nullptr;
    int stride = 0;

    const std::uint8_t* row(int y) const { return first + std::ptrdiff_t{y} * stride; }
};

Rows componentOf(const de265_image* decoded, int index)
{
    Rows rows;
    rows.first = de265_get_image_plane(decoded, index, &rows.stride);
    return rows;
}

struct WrittenRows
{
    std::uint8_t* first = nullptr;
    int stride = 0;

    std::uint8_t* row(int y) const { return first + std::ptrdiff_t{y} * stride; }
};

WrittenRows addPlane(heif_image* picture, heif_channel channel, int width, int height)
{
    checkHeif(heif_image_add_plane(picture, channel, width, height, 8));
    WrittenRows rows;
    rows.first = heif_image_get_plane(picture, channel, &rows.stride);
    return rows;
}

} // namespace

bool hasUsualColors(const de265_image* decoded)
{
    const int matrix = de265_get_image_matrix_coefficients(decoded); // by the codes of ITU-T H.273
    return (matrix == 5 || matrix == 6) && de265_get_image_full_range_flag(decoded) != 0 &&
           de265_get_chroma_format(decoded) == de265_chroma_420 &&
           de265_get_bits_per_pixel(decoded, 0) == 8 && de265_get_bits_per_pixel(decoded, 1) == 8;
}

HeifPicture rgbPictureOf(const de265_image* decoded)
{
    const int width = de265_get_image_width(decoded, 0);
    const int height = de265_get_image_height(decoded, 0);
    heif_image* made = nullptr;
    checkHeif(heif_image_create(width, height, heif_colorspace_RGB, heif_chroma_444, &made));
    HeifPicture picture(made);
    const WrittenRows red = addPlane(made, heif_channel_R, width, height);
    const WrittenRows green = addPlane(made, heif_channel_G, width, height);
    const WrittenRows blue = addPlane(made, heif_channel_B, width, height);
    const Rows brightness = componentOf(decoded, 0);
    const Rows blues = componentOf(decoded, 1);
    const Rows reds = componentOf(decoded, 2);
    Added added(width);
    for (int y = 0; y < height; ++y) {
        if (y % 2 == 0) {
            addedBy(blues.row(y / 2), reds.row(y / 2), (width + 1) / 2, added.red.data(), added.green.data(),
                    added.blue.data());
        }
        addTo(brightness.row(y), added.red.data(), width, red.row(y));
        addTo(brightness.row(y), added.green.data(), width, green.row(y));
        addTo(brightness.row(y), added.blue.data(), width, blue.row(y));
    }
    return picture;
}

} // namespace lumora
