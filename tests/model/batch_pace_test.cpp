// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch_pace.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using namespace std::chrono_literals;

class Pace : public testing::Test
{
protected:
    // Seconds, rounded; -1 where nothing is said.
    std::int64_t left(std::chrono::milliseconds after) const
    {
        const auto time = m_pace.timeLeft(m_start + after);
        return time ? std::chrono::round<std::chrono::seconds>(*time).count() : -1;
    }

    const BatchPace::Time m_start{1000s};
    BatchPace m_pace{0, 10, m_start};
};

TEST_F(Pace, IsThatOfTheFilesSoFar)
{
    m_pace.progressed(1, m_start + 3s);
    EXPECT_EQ(left(3s), 27);
    EXPECT_EQ(left(5s), 25);
    m_pace.progressed(5, m_start + 15s);
    EXPECT_EQ(left(15s), 15);
}

TEST_F(Pace, SaysNothingWithoutAFinishedFileOrInTheFirstMoment)
{
    EXPECT_EQ(left(60s), -1);
    m_pace.progressed(1, m_start + 1500ms);
    EXPECT_EQ(left(1500ms), -1);
    EXPECT_EQ(left(2s), 13);
}

TEST_F(Pace, SaysNothingOfAShortBatch)
{
    m_pace.progressed(5, m_start + 4s);
    EXPECT_EQ(left(4s), -1);
}

TEST_F(Pace, IsNeverNegative)
{
    m_pace.progressed(9, m_start + 18s);
    EXPECT_EQ(left(60s), 0);
}

TEST_F(Pace, CountsNoPause)
{
    m_pace.progressed(2, m_start + 6s);
    m_pace.setPaused(true, m_start + 7s);
    EXPECT_EQ(left(100s), -1);
    m_pace.setPaused(false, m_start + 1007s);
    EXPECT_EQ(left(1007s), 23);
}

TEST_F(Pace, OfABatchSeenFromItsMiddleCountsWhatItSaw)
{
    m_pace = BatchPace(100, 110, m_start);
    m_pace.progressed(102, m_start + 10s);
    EXPECT_EQ(left(10s), 40);
}

TEST(TimeLeftText, IsCoarse)
{
    const auto text = [](auto time) { return timeLeftText(time).toStdString(); };
    EXPECT_EQ(text(0s), "A few seconds left");
    EXPECT_EQ(text(10s), "A few seconds left");
    EXPECT_EQ(text(11s), "About 20 seconds left");
    EXPECT_EQ(text(50s), "About 50 seconds left");
    EXPECT_EQ(text(60s), "About 1 minute left");
    EXPECT_EQ(text(61s), "About 2 minutes left");
    EXPECT_EQ(text(91min), "About 2 hours left");
}

} // namespace
} // namespace lumora
