// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/drop_window_heights.h"

#include <gtest/gtest.h>

#include <ostream>

namespace lumora {

void PrintTo(const DropWindowHeights& heights, std::ostream* out)
{
    *out << "spacing " << heights.spacing << ", zone " << heights.zone << ", results " << heights.results
         << (heights.strip ? "" : ", no strip") << (heights.footer ? "" : ", no footer");
}

namespace {

DropWindowLengths lengths(int available, int results)
{
    return {available, 100, results ? 4 : 3, 90, 36, results, results ? 100 : 0};
}

TEST(DropWindowHeights, GiveTheZoneAllTheRoomThatIsLeft)
{
    EXPECT_EQ(dropWindowHeights(lengths(500, 0)), (DropWindowHeights{18, 346, 0}));
    EXPECT_EQ(dropWindowHeights(lengths(800, 500)), (DropWindowHeights{18, 128, 500}));
}

TEST(DropWindowHeights, ShrinkTheZoneFirst)
{
    EXPECT_EQ(dropWindowHeights(lengths(762, 500)), (DropWindowHeights{18, 90, 500}));
}

TEST(DropWindowHeights, ShrinkTheRowsNext)
{
    EXPECT_EQ(dropWindowHeights(lengths(400, 500)), (DropWindowHeights{18, 90, 138}));
    EXPECT_EQ(dropWindowHeights(lengths(362, 500)), (DropWindowHeights{18, 90, 100}));
}

TEST(DropWindowHeights, NarrowTheGapsThenTheZoneAndAtLastTheRows)
{
    EXPECT_EQ(dropWindowHeights(lengths(342, 500)), (DropWindowHeights{13, 90, 100}));
    EXPECT_EQ(dropWindowHeights(lengths(300, 500)), (DropWindowHeights{8, 68, 100}));
    EXPECT_EQ(dropWindowHeights(lengths(240, 500)), (DropWindowHeights{8, 36, 72}));
}

TEST(DropWindowHeights, LetFooterThenStatisticsGoBeforeTheLastRowAndTheZone)
{
    const auto heights = [](int available, int results) {
        DropWindowLengths all = lengths(available, results);
        all.strip = 26;
        all.footer = 20;
        return dropWindowHeights(all);
    };
    // The smallest room for all is 100 and 90 and 100 with four gaps of 8.
    EXPECT_EQ(heights(322, 500), (DropWindowHeights{8, 90, 100, true, true}));
    EXPECT_EQ(heights(321, 500), (DropWindowHeights{17, 90, 100, true, false}));
    EXPECT_EQ(heights(293, 500), (DropWindowHeights{18, 90, 113, false, false}));
    EXPECT_EQ(heights(240, 500), (DropWindowHeights{8, 70, 100, false, false}));
    EXPECT_EQ(heights(200, 0).strip, true);
    EXPECT_EQ(heights(200, 0).footer, true);
}

} // namespace
} // namespace lumora
