// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_blocks.h"

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
    std::ptrdiff_t stride; // in bytes
    std::ptrdiff_t sampleBytes;
    std::ptrdiff_t rowBytes;
    int height;
    int columns; // of luma, that a sample stands for, and rows
    int rows;

    const std::uint8_t* row(int y) const { return samples + y * stride; }

    // An area in pixels of luma.
    bool isAll(std::uint8_t value, int left, int top, int width, int areaHeight) const
    {
        const std::ptrdiff_t bytes = (width + columns - 1) / columns * sampleBytes;
        for (int y = top / rows; y < (top + areaHeight + rows - 1) / rows; ++y) {
            const std::uint8_t* const first = row(y) + left / columns * sampleBytes;
            if (!std::all_of(first, first + bytes, [=](std::uint8_t byte) { return byte == value; }))
                return false;
        }
        return true;
    }

    bool operator==(const Plane& other) const
    {
        if (rowBytes != other.rowBytes || height != other.height) return false;
        for (int y = 0; y < height; ++y) {
            if (!std::equal(row(y), row(y) + rowBytes, other.row(y))) return false;
        }
        return true;
    }
};

std::vector<Plane> planesOf(const de265_image* picture)
{
    const de265_chroma chroma = de265_get_chroma_format(picture);
    const int count = chroma == de265_chroma_mono ? 1 : 3;
    std::vector<Plane> planes;
    for (int i = 0; i < count; ++i) {
        Plane plane{};
        int stride = 0;
        plane.samples = de265_get_image_plane(picture, i, &stride);
        plane.stride = stride;
        plane.sampleBytes = de265_get_bits_per_pixel(picture, i) > 8 ? 2 : 1;
        plane.rowBytes = de265_get_image_width(picture, i) * plane.sampleBytes;
        plane.height = de265_get_image_height(picture, i);
        plane.columns = i == 0 || chroma == de265_chroma_444 ? 1 : 2;
        plane.rows = i == 0 || chroma != de265_chroma_420 ? 1 : 2;
        planes.push_back(plane);
    }
    return planes;
}

} // namespace

// Of two squares in a row or column of the block the second lies within what may not differ.
bool hasBlockOf(std::uint8_t value, const de265_image* picture)
{
    constexpr int between = 8;
    constexpr int edge = 4;
    const std::vector<Plane> planes = planesOf(picture);
    const int width = de265_get_image_width(picture, 0);
    const int height = de265_get_image_height(picture, 0);
    for (int top = 0; top < height; top += between) {
        for (int left = 0; left < width; left += between) {
            const auto isAllOfIt = [&](const Plane& plane) {
                return plane.isAll(value, left, top, std::min(edge, width - left),
                                   std::min(edge, height - top));
            };
            if (std::ranges::all_of(planes, isAllOfIt)) return true;
        }
    }
    return false;
}

bool areSame(const de265_image* one, const de265_image* other)
{
    return planesOf(one) == planesOf(other);
}

} // namespace lumora
