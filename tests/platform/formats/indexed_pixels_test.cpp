// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "indexed_pixels.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

std::vector<int> colorAt(const IndexedPixels& picture, std::size_t pixel)
{
    const PaletteColor c = picture.palette.at(picture.indices.at(pixel));
    return {c.red, c.green, c.blue, c.alpha};
}

TEST(IndexedPixels, LeadToTheColourOfEachPixel)
{
    const std::vector<std::uint8_t> rgba{200, 40, 40, 255, 1, 2, 3, 128, 200, 40, 40, 255, 9, 9, 9, 255};
    const auto picture = indexed(rgba, 4);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->palette.size(), 3U);
    for (std::size_t pixel = 0; pixel < 4; ++pixel)
        EXPECT_EQ(colorAt(*picture, pixel),
                  std::vector<int>(rgba.begin() + 4 * static_cast<std::ptrdiff_t>(pixel),
                                   rgba.begin() + 4 * static_cast<std::ptrdiff_t>(pixel + 1)));
}

TEST(IndexedPixels, HaveThePaletteInWhichRowsAreForetoldBest)
{
    const std::vector<std::uint8_t> grayAndAlpha{250, 255, 10, 255, 200, 0, 100, 255, 90, 128};
    const auto picture = indexed(grayAndAlpha, 2);
    ASSERT_TRUE(picture);
    std::vector<std::pair<int, int>> palette;
    for (const PaletteColor& c : picture->palette)
        palette.emplace_back(c.alpha, c.green);
    EXPECT_EQ(palette,
              (std::vector<std::pair<int, int>>{{128, 90}, {0, 200}, {255, 10}, {255, 100}, {255, 250}}));
}

TEST(IndexedPixels, AreAbsentAboveAPalette)
{
    std::vector<std::uint8_t> rgb;
    for (int i = 0; i < 257; ++i)
        rgb.insert(rgb.end(), {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i / 256), 0});
    EXPECT_FALSE(indexed(rgb, 3));
    rgb.resize(256 * 3);
    EXPECT_TRUE(indexed(rgb, 3));
}

} // namespace
} // namespace lumora
