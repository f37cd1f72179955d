// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

namespace lumora {
namespace {

using test::ModelTest;

class Pausing : public ModelTest
{
protected:
    void startTwoOfFive()
    {
        m_gate.close();
        m_services.workers = 2;
        drop(files(5));
        ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2; }));
    }
};

TEST_F(Pausing, FilesInFlightFinishAndNoOtherBeginsUntilItIsResumed)
{
    startTwoOfFive();
    model().setPaused(true);
    EXPECT_TRUE(model().isPaused());
    EXPECT_EQ(model().statusText(), QStringLiteral("Paused at 0 of 5"));
    m_gate.open();
    ASSERT_TRUE(waitForStatus("Paused at 2 of 5"));
    EXPECT_EQ(m_gate.started().size(), 2U);
    EXPECT_TRUE(model().isProcessing());
    m_gate.close();
    model().setPaused(false);
    EXPECT_EQ(model().statusText(), QStringLiteral("Optimized 2 of 5"));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2; }));
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 5);
    EXPECT_EQ(m_gate.mostInFlight(), 2U);
}

TEST_F(Pausing, APausedBatchWithoutFilesInFlightIsCancelledAtOnce)
{
    startTwoOfFive();
    model().setPaused(true);
    m_gate.open();
    ASSERT_TRUE(waitForStatus("Paused at 2 of 5"));
    model().cancel();
    EXPECT_FALSE(model().isProcessing());
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_EQ(model().outcome(), (BatchOutcome{2, 0, 0, 3}));
}

TEST_F(Pausing, ABatchWhoseLastFilesWereInFlightEndsAllTheSame)
{
    m_gate.close();
    m_services.workers = 2;
    drop(files(2));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2; }));
    model().setPaused(true);
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_FALSE(model().isPaused());
}

TEST_F(Pausing, OnlyABatchInItsFilesCanBePaused)
{
    m_services.workers = 2;
    EXPECT_FALSE(model().canPause());
    model().setPaused(true);
    EXPECT_FALSE(model().isPaused());
    EXPECT_EQ(model().statusText(), QStringLiteral("Drop images here"));
    startTwoOfFive();
    model().cancel();
    EXPECT_FALSE(model().canPause());
    model().setPaused(true);
    EXPECT_EQ(model().statusText(), QStringLiteral("Cancelling..."));
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
}

} // namespace
} // namespace lumora
