// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures of 2 x 2 pixels that the tests of the BMP reader share.
#pragma once

#include "bmp/bmp_codec.h"
#include "tests/platform/formats/bmp/bmp_builder.h"

#include <gtest/gtest.h>

#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace lumora::test {

struct Readable
{
    const char* name;
    BmpBuilder bmp;
    int channels;
    std::vector<int> rows; // of the 2 x 2 picture, from the top
};

inline void PrintTo(const Readable& c, std::ostream* out)
{
    *out << c.name;
}

// The picture of most cases: red and green above blue and white.
inline const std::vector<int> picture{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
inline const std::vector<std::uint32_t> palette{0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF};
inline const std::vector<std::uint32_t> twoColors{0x102030, 0xFFFFFF};
inline const std::vector<int> checker{255, 255, 255, 16, 32, 48, 16, 32, 48, 255, 255, 255};
inline const std::vector<std::uint8_t> triples{255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0};

inline BmpBuilder core(std::uint16_t bits, std::vector<std::uint32_t> colors,
                       std::vector<std::uint8_t> pixels)
{
    return {.headerSize = 12, .bits = bits, .palette = std::move(colors), .pixels = std::move(pixels)};
}

inline BmpBuilder indexed(std::uint16_t bits, std::vector<std::uint32_t> colors,
                          std::vector<std::uint8_t> pixels, std::uint32_t compression = 0)
{
    const auto used = static_cast<std::uint32_t>(colors.size());
    return {.bits = bits,
            .compression = compression,
            .colorsUsed = used,
            .palette = std::move(colors),
            .pixels = std::move(pixels)};
}

inline BmpBuilder masked(std::uint32_t headerSize, std::uint16_t bits, std::vector<std::uint32_t> masks,
                         std::vector<std::uint8_t> pixels, std::uint32_t compression = 3)
{
    return {.headerSize = headerSize,
            .bits = bits,
            .compression = compression,
            .masks = std::move(masks),
            .pixels = std::move(pixels)};
}

inline const std::vector<std::uint8_t> bgra{255, 0, 0, 0, 255, 255, 255, 64, 0, 0, 255, 128, 0, 255, 0, 255};
inline const std::vector<int> pictureWithAlpha{255, 0, 0,   128, 0,   255, 0,   255,
                                               0,   0, 255, 0,   255, 255, 255, 64};
inline const std::vector<std::uint32_t> maskRgb{0xFF0000, 0xFF00, 0xFF};
inline const std::vector<std::uint32_t> maskRgba{0xFF0000, 0xFF00, 0xFF, 0xFF000000};

inline std::vector<int> valuesOf(std::span<const std::byte> bytes)
{
    std::vector<int> values;
    for (const std::byte value : bytes)
        values.push_back(std::to_integer<int>(value));
    return values;
}

inline void expectPicture(const Readable& readable)
{
    const std::vector<std::byte> file = readable.bmp.file();
    const auto header = readBmpHeader(file);
    ASSERT_TRUE(header) << header.error().description;
    EXPECT_EQ(header->width, 2);
    EXPECT_EQ(header->height, 2);
    EXPECT_EQ(header->bitsPerPixel, readable.bmp.bits);
    EXPECT_EQ(header->channels(), readable.channels);
    const auto rows = decodeBmp(file);
    ASSERT_TRUE(rows) << rows.error().description;
    EXPECT_EQ(valuesOf(*rows), readable.rows);
}

inline void expectNoPictureOfABeginning(const Readable& readable)
{
    const std::vector<std::byte> file = readable.bmp.file();
    const std::size_t headerEnd = 14 + readable.bmp.headerSize;
    for (std::size_t size = 0; size < headerEnd; ++size) {
        EXPECT_FALSE(decodeBmp(std::span(file).first(size))) << readable.name << " " << size;
    }
}

struct Unreadable
{
    const char* name;
    BmpBuilder bmp;
};

inline void PrintTo(const Unreadable& c, std::ostream* out)
{
    *out << c.name;
}

// Of the values of a parametrized test.
inline constexpr auto byName = [](const auto& test) { return std::string(test.param.name); };

} // namespace lumora::test
