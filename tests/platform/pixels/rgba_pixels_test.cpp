// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "rgba_pixels.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumora {
namespace {

TEST(Premultiplied, IsTheRoundedProductForEveryColourAndAlpha)
{
    for (int color = 0; color < 256; ++color) {
        for (int alpha = 0; alpha < 256; ++alpha) {
            std::vector<std::uint8_t> pixel{static_cast<std::uint8_t>(color),
                                            static_cast<std::uint8_t>(alpha)};
            premultiply(pixel.data(), 1, 2);
            ASSERT_EQ(pixel[0], std::lround(color * alpha / 255.0)) << color << " under " << alpha;
            ASSERT_EQ(pixel[1], alpha);
        }
    }
}

TEST(Premultiplied, IsUndoneAsFarAsTheAlphaTells)
{
    for (int alpha = 1; alpha < 256; ++alpha) {
        for (int color = 0; color < 256; ++color) {
            std::vector<std::uint8_t> pixel{static_cast<std::uint8_t>(color),
                                            static_cast<std::uint8_t>(alpha)};
            premultiply(pixel.data(), 1, 2);
            unpremultiply(pixel.data(), 1, 2);
            ASSERT_LE(std::abs(pixel[0] - color), std::lround(127.5 / alpha)) << color << " under " << alpha;
        }
    }
}

TEST(Premultiplied, TreatsEachPixelByItsOwnAlpha)
{
    std::vector<std::uint8_t> pixels{200, 100, 50, 128, 9, 9, 9, 255, 7, 7, 7, 0};
    premultiply(pixels.data(), 3, 4);
    EXPECT_EQ(pixels, (std::vector<std::uint8_t>{100, 50, 25, 128, 9, 9, 9, 255, 0, 0, 0, 0}));
    unpremultiply(pixels.data(), 3, 4);
    EXPECT_EQ(pixels, (std::vector<std::uint8_t>{199, 100, 50, 128, 9, 9, 9, 255, 0, 0, 0, 0}));
}

// A colour brighter than its alpha is none that premultiplying gives.
TEST(Premultiplied, NeverOverflowsWhenUndone)
{
    std::vector<std::uint8_t> pixel{255, 1};
    unpremultiply(pixel.data(), 1, 2);
    EXPECT_EQ(pixel[0], 255);
}

TEST(PageBytes, AreZeroToTheLast)
{
    const PageBytes bytes = allocatePages(37 * 11 * 4);
    EXPECT_TRUE(std::all_of(bytes.get(), bytes.get() + 37 * 11 * 4, [](std::uint8_t b) { return b == 0; }));
    bytes[37 * 11 * 4 - 1] = 1;
}

} // namespace
} // namespace lumora
