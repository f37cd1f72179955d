// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

#include <atomic>
#include <thread>

namespace lumora {
namespace {

using test::ModelTest;

class Cancelling : public ModelTest
{
};

TEST_F(Cancelling, FilesInFlightFinishAndNothingElseStarts)
{
    m_gate.close();
    m_services.workers = 2;
    bool completed = false;
    model().setOnComplete([&] { completed = true; });
    drop(files(10));
    ASSERT_TRUE(test::waitUntil([&] { return model().totalCount() == 10; }));
    model().process({file("later.png")});
    model().cancel();
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 2);
    EXPECT_EQ(m_stats.stats().filesSucceeded, 2);
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_TRUE(completed);
    EXPECT_FALSE(m_delay->isRunning());
}

TEST_F(Cancelling, EndsAScanAsDone)
{
    m_services.expand = [](const auto& inputs, std::stop_token stop) {
        while (!stop.stop_requested())
            std::this_thread::yield();
        return inputs;
    };
    drop(files(3));
    model().cancel();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_TRUE(m_gate.started().empty());
}

TEST_F(Cancelling, DropsWhatWaitsForItsBatch)
{
    bool completed = false;
    model().setOnComplete([&] { completed = true; });
    model().process(files(3));
    model().cancel();
    EXPECT_FALSE(m_delay->isRunning());
    EXPECT_TRUE(completed);
    EXPECT_FALSE(model().isProcessing());
}

TEST_F(Cancelling, AnIdleModelStaysAsItIs)
{
    model().cancel();
    EXPECT_EQ(model().statusText(), QStringLiteral("Drop images here"));
}

TEST_F(Cancelling, IsSaidAtOnceAndUntilTheFilesInFlightAreDone)
{
    m_gate.close();
    m_services.workers = 2;
    drop(files(10));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2; }));
    EXPECT_FALSE(model().isCancelling());
    model().cancel();
    EXPECT_TRUE(model().isCancelling());
    EXPECT_EQ(model().statusText(), QStringLiteral("Cancelling..."));
    m_gate.letGo("0.png");
    ASSERT_TRUE(test::waitUntil([&] { return model().resultCount() == 1; }));
    EXPECT_EQ(model().statusText(), QStringLiteral("Cancelling..."));
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(model().wasCancelled());
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_EQ(model().outcome(), (BatchOutcome{2, 0, 0, 8}));
    drop(files(1));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_FALSE(model().wasCancelled());
    EXPECT_EQ(model().outcome(), (BatchOutcome{1, 0, 0, 0}));
}

TEST_F(Cancelling, AtOnceKillsWhatRuns)
{
    m_gate.close();
    m_services.workers = 2;
    drop(files(10));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2; }));
    model().cancelNow();
    ASSERT_TRUE(waitUntilDone());
    ASSERT_EQ(model().resultCount(), 2);
    for (int row = 0; row < 2; ++row)
        EXPECT_EQ(model().resultAt(row).message, "killed");
    EXPECT_EQ(m_gate.started().size(), 2U);
}

TEST_F(Cancelling, TheNextDropAfterIsProcessed)
{
    drop(files(3));
    model().cancel();
    ASSERT_TRUE(waitUntilDone());
    const int before = model().resultCount();
    drop({file("next.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), before + 1);
}

TEST_F(Cancelling, DestructionInABatchKillsWhatRunsAndWaits)
{
    m_gate.close();
    drop(files(10));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 8; }));
    m_model.reset();
    EXPECT_EQ(m_gate.inFlight(), 0U);
    EXPECT_EQ(m_gate.started().size(), 8U);
}

TEST_F(Cancelling, DestructionWhileScanningWaits)
{
    std::atomic<bool> ended = false;
    m_services.expand = [&](const auto& inputs, std::stop_token stop) {
        while (!stop.stop_requested())
            std::this_thread::yield();
        ended = true;
        return inputs;
    };
    drop(files(3));
    m_model.reset();
    EXPECT_TRUE(ended);
}

} // namespace
} // namespace lumora
