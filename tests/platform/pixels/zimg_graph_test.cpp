// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "zimg_graph.h"

#include <gtest/gtest.h>

#include <cstring>

namespace lumora {
namespace {

Planes filledWith(std::uint8_t component, int width, int height, int bands)
{
    Planes planes(width, height, bands, 1);
    for (int band = 0; band < bands; ++band)
        for (int y = 0; y < height; ++y)
            std::memset(planes.row(band, y), component + band, static_cast<std::size_t>(width));
    return planes;
}

class ZimgGraphBands : public testing::TestWithParam<int>
{
};

TEST_P(ZimgGraphBands, KeepAnEvenToneEachItsOwn)
{
    const int bands = GetParam();
    const auto graph = ZimgGraph::build({90, 60, 1}, {90, 0, 60}, {31, 17, 1}, bands);
    ASSERT_TRUE(graph) << graph.error().description;
    Planes to = filledWith(0, 31, 17, bands);
    ASSERT_TRUE(graph->run(filledWith(100, 90, 60, bands), 0, to, 0));
    for (int band = 0; band < bands; ++band)
        for (int y = 0; y < 17; ++y)
            for (int x = 0; x < 31; ++x)
                ASSERT_EQ(to.row(band, y)[x], 100 + band) << band << ' ' << x << ' ' << y;
}

INSTANTIATE_TEST_SUITE_P(Counts, ZimgGraphBands, testing::Values(1, 2, 3, 4));

TEST(ZimgGraph, WidensEightBitsToTheFullRangeOfSixteen)
{
    const auto graph = ZimgGraph::build({64, 8, 1}, {64, 0, 8}, {32, 8, 2}, 1);
    ASSERT_TRUE(graph);
    Planes to(32, 8, 1, 2);
    ASSERT_TRUE(graph->run(filledWith(255, 64, 8, 1), 0, to, 0));
    std::uint16_t component = 0;
    std::memcpy(&component, to.row(0, 7) + std::ptrdiff_t{31} * 2, sizeof component);
    EXPECT_EQ(component, 65535);
}

TEST(ZimgGraph, WorksFromAndToTheGivenRows)
{
    const auto graph = ZimgGraph::build({64, 4, 1}, {64, 0, 4}, {64, 4, 1}, 1);
    ASSERT_TRUE(graph);
    Planes from = filledWith(10, 64, 12, 1);
    for (int y = 8; y < 12; ++y)
        std::memset(from.row(0, y), 200, 64);
    Planes to = filledWith(77, 64, 12, 1);
    ASSERT_TRUE(graph->run(from, 8, to, 4));
    EXPECT_EQ(to.row(0, 3)[0], 77);
    EXPECT_EQ(to.row(0, 4)[0], 200);
    EXPECT_EQ(to.row(0, 7)[63], 200);
    EXPECT_EQ(to.row(0, 8)[0], 77);
}

TEST(ZimgGraph, SaysWhyItCannotBeBuilt)
{
    const auto graph = ZimgGraph::build({64, 8, 1}, {64, 0, 8}, {0, 8, 1}, 1);
    ASSERT_FALSE(graph);
    EXPECT_FALSE(graph.error().description.empty());
}

} // namespace
} // namespace lumora
