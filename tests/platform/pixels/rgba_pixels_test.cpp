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

TEST(RgbaBytes, AreZeroToTheLast)
{
    const RgbaBytes bytes = allocateRgba({37, 11});
    EXPECT_TRUE(std::all_of(bytes.get(), bytes.get() + 37 * 11 * 4, [](std::uint8_t b) { return b == 0; }));
    bytes[37 * 11 * 4 - 1] = 1;
}

struct Turned
{
    Orientation orientation;
    std::string_view letters; // row by row; 3 wide up to orientation 4, else 2
};

void PrintTo(const Turned& turned, std::ostream* out)
{
    *out << turned.orientation;
}

class TurnedUpright : public testing::TestWithParam<Turned>
{
};

TEST_P(TurnedUpright, IsThatOfTheExifNumber)
{
    constexpr std::string_view stored = "abcdef"; // two rows of three
    RgbaBytes rgba = allocateRgba({3, 2});
    for (std::size_t i = 0; i < stored.size(); ++i)
        for (std::size_t c = 0; c < 4; ++c)
            rgba[i * 4 + c] = static_cast<std::uint8_t>(stored[i] + static_cast<char>(c));
    const RgbaBytes upright = turnedUpright(std::move(rgba), {3, 2}, GetParam().orientation);
    std::string letters;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        letters += static_cast<char>(upright[i * 4]);
        EXPECT_EQ(upright[i * 4 + 3], upright[i * 4] + 3);
    }
    EXPECT_EQ(letters, GetParam().letters);
}

INSTANTIATE_TEST_SUITE_P(Orientations, TurnedUpright,
                         testing::Values(Turned{0, "abcdef"}, Turned{1, "abcdef"}, Turned{2, "cbafed"},
                                         Turned{3, "fedcba"}, Turned{4, "defabc"}, Turned{5, "adbecf"},
                                         Turned{6, "daebfc"}, Turned{7, "fcebda"}, Turned{8, "cfbead"},
                                         Turned{9, "abcdef"}));

} // namespace
} // namespace lumora
