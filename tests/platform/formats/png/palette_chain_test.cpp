// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/palette_chain.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace lumora {
namespace {

using testing::ElementsAre;

PngLayout rowOf(const std::vector<std::uint8_t>& indices, std::vector<PaletteColor> palette)
{
    PngLayout layout{indices.size(), 1, 8, 3, indices.size(), 1, FilterableRows(indices.size(), 1), {}};
    std::ranges::copy(indices, layout.pixels.rows().begin());
    layout.palette = std::move(palette);
    return layout;
}

const std::vector<PaletteColor> fourOpaque(4, PaletteColor{9, 9, 9, 255});

TEST(ChainedPalette, HasColorsThatMeetSideBySide)
{
    // 0 meets 3 most, 3 meets 1, 1 meets 2.
    const auto layout = rowOf({0, 3, 0, 3, 0, 3, 1, 3, 1, 2, 1}, fourOpaque);
    EXPECT_THAT(chainedOrder(layout), ElementsAre(0, 2, 3, 1));
}

TEST(ChainedPalette, SeesTheRowAbove)
{
    PngLayout layout{2, 2, 8, 3, 2, 1, FilterableRows(2, 2), fourOpaque};
    std::ranges::copy(std::vector<std::uint8_t>{0, 1, 3, 2}, layout.pixels.rows().begin());
    layout.palette.resize(4);
    // Four meetings in a circle, of which the last is left out: 2, 1, 0, 3.
    EXPECT_THAT(chainedOrder(layout), ElementsAre(2, 1, 0, 3));
}

TEST(ChainedPalette, HasWhatIsNotOpaqueFirst)
{
    auto palette = fourOpaque;
    palette[2].alpha = 0;
    EXPECT_THAT(chainedOrder(rowOf({0, 1, 2, 3}, palette)), ElementsAre(1, 2, 0, 3));
}

TEST(ChainedPalette, HoldsColorsThatMeetNone)
{
    EXPECT_THAT(chainedOrder(rowOf({1, 1, 1}, fourOpaque)), ElementsAre(0, 1, 2, 3));
}

TEST(ChainedPalette, MovesColorsWithTheirIndices)
{
    std::vector<PaletteColor> palette{{1, 0, 0, 255}, {2, 0, 0, 255}, {3, 0, 0, 255}};
    std::vector<std::uint8_t> indices{0, 1, 2, 1};
    const std::vector<std::uint8_t> newIndex{2, 0, 1};
    renumber(indices, newIndex);
    reorder(palette, newIndex);
    EXPECT_THAT(indices, ElementsAre(2, 0, 1, 0));
    EXPECT_EQ(palette[2].red, 1);
    EXPECT_EQ(palette[0].red, 2);
    EXPECT_EQ(palette[1].red, 3);
}

} // namespace
} // namespace lumora
