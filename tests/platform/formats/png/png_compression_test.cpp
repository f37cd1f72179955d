// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_compression.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace lumora {
namespace {

using ValueAt = std::function<unsigned(unsigned x, unsigned y)>;

PngLayout grayLayout(std::size_t width, std::size_t height, const ValueAt& valueAt)
{
    PngLayout layout{width, height, 8, 0, width, 1, FilterableRows(width, height), {}};
    auto value = layout.pixels.rows().begin();
    for (unsigned y = 0; y < height; ++y) {
        for (unsigned x = 0; x < width; ++x)
            *value++ = static_cast<std::uint8_t>(valueAt(x, y));
    }
    return layout;
}

unsigned noise(unsigned x, unsigned y)
{
    unsigned value = x * 0x9E3779B1U ^ y * 0x85EBCA77U;
    value = (value ^ value >> 15U) * 0x2C1B3C6DU;
    return value >> 24U;
}

TEST(PngCompression, LeavesWhatRepeatsUnfiltered)
{
    auto layout = grayLayout(1000, 1000, [](unsigned x, unsigned y) { return noise(x % 50, y % 20); });
    EXPECT_EQ(bestCompression(layout).filters, RowFilters::none);
}

TEST(PngCompression, FiltersWhatIsSmooth)
{
    auto layout = grayLayout(
        1000, 1000, [](unsigned x, unsigned y) { return (x * x / 3000 + y * y / 2500 + x * y / 9000); });
    EXPECT_NE(bestCompression(layout).filters, RowFilters::none);
}

// As in photographs, where a search would take twenty times as long for nothing.
TEST(PngCompression, SearchesForNothingInNoise)
{
    auto layout =
        grayLayout(1000, 1000, [](unsigned x, unsigned y) { return 100 + x / 20 + noise(x, y) / 16; });
    const Search search = bestCompression(layout).search;
    EXPECT_TRUE(search == Search::none || search == Search::runs);
}

TEST(PngCompression, SearchesLongestInSmallPictures)
{
    auto layout = grayLayout(100, 100, [](unsigned x, unsigned y) { return noise(x % 50, y % 20); });
    EXPECT_EQ(bestCompression(layout).search, Search::thorough);
}

// A slope whose indices are in disorder, as they come out of a palette sorted by something else.
TEST(PngCompression, OrdersAPaletteBySlopes)
{
    auto layout = grayLayout(
        1000, 600, [](unsigned x, unsigned y) { return (x / 4 + y / 5 + noise(x, y) / 100) * 77 % 256; });
    layout.colorType = 3;
    for (unsigned i = 0; i < 256; ++i)
        layout.palette.push_back({static_cast<std::uint8_t>(i), 0, 0, 255});
    const auto rows = layout.pixels.rows();
    const std::vector<std::uint8_t> before(rows.begin(), rows.end());
    EXPECT_NE(bestCompression(layout).filters, RowFilters::none);
    std::vector<std::uint8_t> colors;
    for (const std::uint8_t index : rows)
        colors.push_back(layout.palette[index].red);
    EXPECT_TRUE(colors == before);
    EXPECT_FALSE(std::ranges::equal(rows, before));
}

} // namespace
} // namespace lumora
