// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_rgb.h"

#include "pixels/vector_clones.h"
#include "types/heif_items.h"

#include <libde265/de265.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora {
namespace {

// What the differences add to the brightness of each pixel of a row. Green gets both, one after the other.
struct Added
{
    explicit Added(std::ptrdiff_t width)
        : red(roundedUp(width)), greenByRed(roundedUp(width)), greenByBlue(roundedUp(width)),
          blue(roundedUp(width))
    {
    }

    static std::size_t roundedUp(std::ptrdiff_t width) { return static_cast<std::size_t>(width + width % 2); }

    std::vector<float> red;
    std::vector<float> greenByRed;
    std::vector<float> greenByBlue;
    std::vector<float> blue;
};

LUMORA_VECTOR_CLONES void addedBy(const std::uint8_t* differences, std::ptrdiff_t count, float own,
                                  float green, float* __restrict toOwn, float* __restrict toGreen)
{
    constexpr float none = 128;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        const float difference = static_cast<float>(differences[i]) - none;
        toOwn[2 * i] = toOwn[2 * i + 1] = own * difference;
        toGreen[2 * i] = toGreen[2 * i + 1] = green * difference;
    }
}

inline std::uint8_t rounded(float color)
{
    constexpr float white = 255;
    const float atLeastBlack = color + 0.5F < 0 ? 0 : color + 0.5F;
    return static_cast<std::uint8_t>(static_cast<int>(atLeastBlack > white ? white : atLeastBlack));
}

LUMORA_VECTOR_CLONES void addTo(const std::uint8_t* brightness, const float* __restrict added,
                                std::ptrdiff_t width, std::uint8_t* __restrict color)
{
    for (std::ptrdiff_t i = 0; i < width; ++i)
        color[i] = rounded(static_cast<float>(brightness[i]) + added[i]);
}

LUMORA_VECTOR_CLONES void addTo(const std::uint8_t* brightness, const float* __restrict first,
                                const float* __restrict second, std::ptrdiff_t width,
                                std::uint8_t* __restrict color)
{
    for (std::ptrdiff_t i = 0; i < width; ++i)
        color[i] = rounded(static_cast<float>(brightness[i]) + first[i] + second[i]);
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
    const ColorCoding coding{static_cast<unsigned>(de265_get_image_matrix_coefficients(decoded)),
                             de265_get_image_full_range_flag(decoded) != 0};
    return coding.isUsual() && de265_get_chroma_format(decoded) == de265_chroma_420 &&
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
            addedBy(reds.row(y / 2), (width + 1) / 2, 1.402F, -0.71413626F, added.red.data(),
                    added.greenByRed.data());
            addedBy(blues.row(y / 2), (width + 1) / 2, 1.772F, -0.34413628F, added.blue.data(),
                    added.greenByBlue.data());
        }
        addTo(brightness.row(y), added.red.data(), width, red.row(y));
        addTo(brightness.row(y), added.greenByBlue.data(), added.greenByRed.data(), width, green.row(y));
        addTo(brightness.row(y), added.blue.data(), width, blue.row(y));
    }
    return picture;
}

} // namespace lumora
