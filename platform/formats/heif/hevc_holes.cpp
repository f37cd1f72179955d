// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_holes.h"

#include "system/freed_memory.h"

#include <libde265/de265.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora {
namespace {

struct Plane
{
    const std::uint8_t* samples;
    int stride; // in bytes, as is what follows of rows
    int sampleBytes;
    int columns; // a luma pixel has one sample in so many columns and rows
    int rows;

    // An area of luma pixels, all of whose samples are the fill.
    bool isFill(int left, int top, int width, int height) const
    {
        const auto isFill = [](std::uint8_t byte) { return byte == newMemoryFill; };
        const std::ptrdiff_t bytes = std::ptrdiff_t{(width + columns - 1) / columns} * sampleBytes;
        for (int y = top / rows; y < (top + height + rows - 1) / rows; ++y) {
            const std::uint8_t* const first =
                samples + std::ptrdiff_t{y} * stride + std::ptrdiff_t{left / columns} * sampleBytes;
            if (!std::all_of(first, first + bytes, isFill)) return false;
        }
        return true;
    }
};

Plane planeOf(const de265_image* decoded, int index)
{
    const de265_chroma chroma = de265_get_chroma_format(decoded);
    Plane plane{};
    plane.samples = de265_get_image_plane(decoded, index, &plane.stride);
    plane.sampleBytes = de265_get_bits_per_pixel(decoded, index) > 8 ? 2 : 1;
    plane.columns = index == 0 || chroma == de265_chroma_444 ? 1 : 2;
    plane.rows = index == 0 || chroma != de265_chroma_420 ? 1 : 2;
    return plane;
}

// Whether the fill is no colour: it is more than samples of 9 to 15 bits can say, and no brightness with such
// differences. At full resolution components are differences only where the stream says so, for they may be
// colours.
bool tellsFill(const de265_image* decoded)
{
    constexpr int colors = 0; // codes of ITU-T H.273
    constexpr int unspecified = 2;
    const int bits = de265_get_bits_per_pixel(decoded, 0);
    if (bits > 8 && bits < 16) return true;
    const de265_chroma chroma = de265_get_chroma_format(decoded);
    const int matrix = de265_get_image_matrix_coefficients(decoded);
    if (chroma == de265_chroma_444) return matrix != colors && matrix != unspecified;
    return chroma != de265_chroma_mono;
}

} // namespace

// The smallest block that the codec leaves out has sixteen pixels a side, of which filters change three from
// outside: the second of two squares lies within what is left. At the right and at the bottom less may be
// seen.
bool hasHoles(const de265_image* decoded)
{
    constexpr int between = 8;
    constexpr int edge = 4;
    if (!tellsFill(decoded)) return false;
    std::vector<Plane> planes{planeOf(decoded, 0)};
    if (de265_get_chroma_format(decoded) != de265_chroma_mono)
        planes.insert(planes.end(), {planeOf(decoded, 1), planeOf(decoded, 2)});
    const int width = de265_get_image_width(decoded, 0);
    const int height = de265_get_image_height(decoded, 0);
    for (int top = 0; top < height; top += between) {
        for (int left = 0; left < width; left += between) {
            const auto isFill = [&](const Plane& plane) {
                return plane.isFill(left, top, std::min(edge, width - left), std::min(edge, height - top));
            };
            if (std::ranges::all_of(planes, isFill)) return true;
        }
    }
    return false;
}

} // namespace lumora
