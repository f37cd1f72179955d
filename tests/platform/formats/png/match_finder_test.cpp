// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/match_finder.h"

#include "tests/platform/formats/png/noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace lumora {
namespace {

using Data = std::vector<std::uint8_t>;
using Taken = MatchLists::Taken;

Data noiseOf(std::size_t size, unsigned values)
{
    Data data;
    test::Noise noise;
    for (std::size_t i = 0; i < size; ++i)
        data.push_back(static_cast<std::uint8_t>(noise.next() % values));
    return data;
}

void expectEqual(const Data& data, std::size_t at, std::size_t end, Match match)
{
    ASSERT_GE(match.length, shortestMatch);
    ASSERT_LE(match.length, longestMatch);
    ASSERT_LE(at + match.length, end);
    ASSERT_LE(match.distance, std::min(at, windowBytes));
    const auto here = data.begin() + static_cast<std::ptrdiff_t>(at);
    ASSERT_TRUE(std::equal(here, here + match.length, here - match.distance)) << at;
}

void expectTrue(const Data& data, std::size_t begin, const MatchLists& lists)
{
    const std::size_t end = begin + lists.size();
    for (std::size_t at = begin; at < end; ++at) {
        Match nearer{};
        for (const Match match : lists[at - begin]) {
            ASSERT_GT(match.length, nearer.length);
            expectEqual(data, at, end, match);
            nearer = match;
        }
    }
}

TEST(MatchFinder, FindsWhatIsThere)
{
    for (const std::size_t step : {1U, 2U, 3U, 4U, 6U, 8U}) {
        for (const unsigned values : {1U, 2U, 5U, 256U}) {
            const Data data = noiseOf(200000, values);
            const PixelRows rows{data, 1 + 100 * step, step};
            MatchFinder finder(rows, 50000);
            MatchLists lists;
            finder.find(100001, lists);
            ASSERT_EQ(lists.size(), 100001U);
            expectTrue(data, 50000, lists);
            finder.find(49999, lists);
            ASSERT_EQ(lists.size(), 49999U);
            expectTrue(data, 150001, lists);
        }
    }
}

// What begins later may reach farther than a longest match that soon ends.
TEST(MatchFinder, LeapsOnlyWhereMuchIsRepeated)
{
    for (const std::size_t repeated : {std::size_t{300}, std::size_t{600}}) {
        Data data = noiseOf(10000, 256);
        const Data begin(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(repeated));
        data.insert(data.end(), begin.begin(), begin.end());
        const Data end = noiseOf(20000, 256);
        data.insert(data.end(), end.begin() + 15000, end.end());
        MatchFinder finder({data}, 0);
        MatchLists lists;
        finder.find(data.size(), lists);
        EXPECT_EQ(lists.takenAt(10000), repeated > 2 * longestMatch ? Taken::whole : Taken::inPart);
        EXPECT_EQ(lists[10000].back().length, longestMatch);
        EXPECT_EQ(lists[10040].back().length, longestMatch);
    }
}

// All of it is repeated from afar, but a run is nearer.
TEST(MatchFinder, NamesTheRunWithinALeap)
{
    Data data = noiseOf(1000, 256);
    std::fill_n(data.begin() + 100, 101, data[100]);
    const Data begin = data;
    data.insert(data.end(), begin.begin(), begin.end());
    MatchFinder finder({data}, 0);
    MatchLists lists;
    finder.find(data.size(), lists);
    expectTrue(data, 0, lists);
    EXPECT_EQ(lists.takenAt(1050), Taken::whole);
    ASSERT_EQ(lists[1050].size(), 1U);
    ASSERT_EQ(lists[1140].size(), 2U);
    EXPECT_EQ(lists[1140][0].length, 61);
    EXPECT_EQ(lists[1140][0].distance, 1);
    EXPECT_EQ(lists[1140][1].length, longestMatch);
    EXPECT_EQ(lists[1140][1].distance, 1000);
}

// Nothing but the run itself is looked for where no match is longer.
TEST(MatchFinder, TakesWhatIsLongestWithinRuns)
{
    const Data data(100000, 5);
    MatchFinder finder({data, 301, 3}, 0);
    MatchLists lists;
    finder.find(data.size(), lists);
    expectTrue(data, 0, lists);
    for (std::size_t at = 10; at < data.size() - 300; ++at) {
        ASSERT_EQ(lists.takenAt(at), Taken::whole) << at;
        ASSERT_EQ(lists[at].size(), 1U) << at;
        ASSERT_EQ(lists[at][0].length, longestMatch) << at;
        ASSERT_EQ(lists[at][0].distance, 1) << at;
    }
}

// Of two copies, the longer one lies farther away; both are wanted.
TEST(MatchFinder, FindsTheLongestAndTheNearest)
{
    Data data = noiseOf(3000, 256);
    const Data start(data.begin() + 400, data.begin() + 440);
    data.insert(data.end(), start.begin(), start.begin() + 12);
    data.insert(data.end(), 30, 7);
    data.insert(data.end(), start.begin(), start.end());
    data.insert(data.end(), 100, 8);
    MatchFinder finder({data}, 0);
    MatchLists lists;
    finder.find(data.size(), lists);
    const auto found = lists[3042];
    ASSERT_EQ(found.size(), 2U);
    EXPECT_EQ(found[0].length, 12);
    EXPECT_EQ(found[0].distance, 42);
    EXPECT_EQ(found[1].length, 40);
    EXPECT_EQ(found[1].distance, 3042 - 400);
}

// A pixel's last byte and what follows it are those of a row before, its first bytes are not. What is nearest
// has three of those bytes and no more.
TEST(MatchFinder, FindsWhatBeginsWithinAPixel)
{
    constexpr std::size_t rowBytes = 301;
    Data data = noiseOf(2 * rowBytes, 256);
    const auto second = data.begin() + rowBytes;
    std::copy(data.begin() + 120, data.begin() + 220, second + 120); // the third byte of its pixel
    std::copy(data.begin() + 120, data.begin() + 124, second + 20);
    MatchFinder finder({data, rowBytes, 3}, 0);
    MatchLists lists;
    finder.find(data.size(), lists);
    const auto found = lists[rowBytes + 120];
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found.back().length, 100);
    EXPECT_EQ(found.back().distance, rowBytes);
}

} // namespace
} // namespace lumora
