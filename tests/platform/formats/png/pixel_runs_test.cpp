// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/pixel_runs.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace lumora {
namespace {

using Data = std::vector<std::uint8_t>;
using Found = std::vector<std::pair<int, int>>; // length and distance

constexpr std::size_t step = 3;

void add(Data& data, std::size_t count, const Data& pixel)
{
    for (std::size_t i = 0; i < count; ++i)
        data.insert(data.end(), pixel.begin(), pixel.end());
}

Found foundAt(const PixelRuns& runs, std::size_t position, std::size_t most = longestMatch)
{
    FewMatches<PixelRuns::mostMatches> matches;
    matches.clear();
    runs.take(position, most, matches);
    MatchLists lists;
    lists.clear();
    matches.addTo(lists);
    lists.endList();
    Found found;
    for (const Match match : lists[0])
        found.emplace_back(match.length, match.distance);
    return found;
}

class PixelRunsTest : public testing::Test
{
protected:
    PixelRunsTest()
    {
        add(m_data, 20, {1, 2, 3});
        add(m_data, 4, {7, 8, 9});
        add(m_data, 30, {1, 2, 3});
        add(m_data, 4, {7, 8, 9});
        add(m_data, 40, {4, 4, 4});
    }

    static constexpr std::size_t first = 0;
    static constexpr std::size_t second = 24 * step;
    static constexpr std::size_t ofOneByte = 58 * step;
    Data m_data;
    PixelRuns m_runs{step};
};

TEST_F(PixelRunsTest, GoOnFromTheSecondPixel)
{
    m_runs.meet(m_data, first);
    EXPECT_TRUE(m_runs.isDeepAt(first));
    EXPECT_EQ(m_runs.distanceAt(first + 2), 0U);
    EXPECT_EQ(m_runs.distanceAt(first + 3), step);
    EXPECT_EQ(foundAt(m_runs, first + 2), Found{});
    EXPECT_EQ(foundAt(m_runs, first + 4), (Found{{56, 3}}));
    EXPECT_EQ(foundAt(m_runs, first + 4, 10), (Found{{10, 3}}));
}

// The other run has 20 pixels, and four are equal behind both.
TEST_F(PixelRunsTest, RepeatAnEarlierOneFromWhereItIsLongEnoughAndOnBehindItsEnd)
{
    m_runs.meet(m_data, first);
    m_runs.meet(m_data, second);
    EXPECT_EQ(foundAt(m_runs, second + 29), (Found{{61, 3}}));
    EXPECT_EQ(foundAt(m_runs, second + 30), (Found{{60, 3}, {72, 34 * 3}}));
    EXPECT_EQ(foundAt(m_runs, second + 31), (Found{{59, 3}, {71, 34 * 3}}));
}

TEST_F(PixelRunsTest, OfEqualBytesRepeatASingleOne)
{
    m_runs.meet(m_data, ofOneByte);
    EXPECT_EQ(m_runs.distanceAt(ofOneByte), 0U);
    EXPECT_EQ(m_runs.distanceAt(ofOneByte + 1), 1U);
}

// As behind a match that ended there.
TEST_F(PixelRunsTest, AreKnownFromTheirBeginningWhereTheyAreMetLater)
{
    m_runs.meet(m_data, first + 10 * step);
    EXPECT_EQ(m_runs.distanceAt(first + 10 * step), step);
    m_runs.meet(m_data, second);
    EXPECT_EQ(foundAt(m_runs, second + 30), (Found{{60, 3}, {72, 34 * 3}}));
}

TEST_F(PixelRunsTest, AreNoneWhereFewPixelsAreEqual)
{
    m_runs.meet(m_data, 20 * step);
    EXPECT_FALSE(m_runs.isDeepAt(20 * step));
}

// Their last pixels are left to whoever looks for short runs.
TEST_F(PixelRunsTest, AreNotDeepAtTheirEnd)
{
    m_runs.meet(m_data, second);
    EXPECT_TRUE(m_runs.isDeepAt(m_runs.deepEnd() - 1));
    EXPECT_FALSE(m_runs.isDeepAt(m_runs.deepEnd()));
    EXPECT_LT(m_runs.deepEnd(), second + 30 * step);
    EXPECT_GT(m_runs.deepEnd(), second + 20 * step);
}

} // namespace
} // namespace lumora
