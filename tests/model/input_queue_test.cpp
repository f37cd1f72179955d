// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

namespace lumora {
namespace {

using test::ModelTest;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

class InputQueue : public ModelTest
{
};

TEST_F(InputQueue, StartsWithTheInvitation)
{
    EXPECT_EQ(model().statusText(), QStringLiteral("Drop images here"));
    EXPECT_FALSE(model().isProcessing());
    EXPECT_EQ(model().resultCount(), 0);
}

TEST_F(InputQueue, ABurstOfDropsIsOneBatch150MillisecondsAfterTheLast)
{
    for (const char* name : {"a.png", "b.png", "c.png"}) {
        m_delay ? m_delay->advance(100ms) : void();
        model().process({file(name)});
    }
    m_delay->advance(149ms);
    EXPECT_FALSE(model().isProcessing());
    m_delay->advance(1ms);
    EXPECT_TRUE(model().isProcessing());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_statuses.contains(QStringLiteral("Optimizing 3 images with 3 workers...")));
}

TEST_F(InputQueue, ARepeatedDropIsToldAndTheFirstStillRuns)
{
    model().process({file("a.png")});
    model().process({file("x/../a.png")});
    EXPECT_EQ(model().statusText(), QStringLiteral("No supported image files found"));
    m_delay->advance(150ms);
    EXPECT_EQ(model().statusText(), QStringLiteral("Scanning for images..."));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(rows(), ElementsAre("a.png"));
}

TEST_F(InputQueue, ARepeatedDropDoesNotProlongTheWait)
{
    model().process({file("a.png")});
    m_delay->advance(100ms);
    model().process({file("a.png")});
    m_delay->advance(50ms);
    EXPECT_TRUE(model().isProcessing());
    EXPECT_TRUE(waitUntilDone());
}

TEST_F(InputQueue, AnEmptyDropStartsNothing)
{
    model().process({});
    EXPECT_EQ(model().statusText(), QStringLiteral("No supported image files found"));
    EXPECT_FALSE(m_delay->isRunning());
}

TEST_F(InputQueue, ADropDuringABatchWaitsSilentlyAndRunsRightAfter)
{
    m_gate.close();
    bool completed = false;
    drop({file("a.png")});
    model().setOnComplete([&] { completed = true; });
    ASSERT_TRUE(waitForStatus("Optimizing 1 image with 1 worker..."));
    m_statuses.clear();
    model().process({file("b.png")});
    EXPECT_TRUE(m_statuses.isEmpty());
    EXPECT_FALSE(m_delay->isRunning());

    m_gate.letGo("a.png");
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.started().size() == 2; }));
    EXPECT_FALSE(completed);
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(completed);
    EXPECT_EQ(m_statuses,
              QStringList({QStringLiteral("Optimized 1 of 1"), QStringLiteral("Scanning for images..."),
                           QStringLiteral("Optimizing 1 image with 1 worker..."),
                           QStringLiteral("Optimized 1 of 1"), QStringLiteral("Done")}));
}

TEST_F(InputQueue, TheSameFileInTwoBatchesIsProcessedTwice)
{
    drop({file("a.png")});
    ASSERT_TRUE(waitUntilDone());
    drop({file("a.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(rows(), ElementsAre("a.png", "a.png"));
}

TEST_F(InputQueue, SettingsChangedWhileScanningReachTheNextBatchOnly)
{
    m_settings.quality = 10;
    drop({file("a.png")});
    EXPECT_EQ(model().statusText(), QStringLiteral("Scanning for images..."));
    m_settings.quality = 20;
    ASSERT_TRUE(waitUntilDone());
    drop({file("b.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(m_qualities, ElementsAre(10, 20));
}

TEST_F(InputQueue, DropsThatVanishOrHoldNoImagesAreToldAtTheEnd)
{
    bool completed = false;
    model().setOnComplete([&] { completed = true; });
    drop({file("gone"), file("notes.txt")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(m_statuses, QStringList({QStringLiteral("Scanning for images..."),
                                       QStringLiteral("No supported image files found")}));
    EXPECT_TRUE(completed);
}

TEST_F(InputQueue, ADropFromInsideTheCompletionIsTheNextBatch)
{
    model().setOnComplete([&] { model().process({file("b.png")}); });
    drop({file("a.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_delay->isRunning());
    m_delay->advance(150ms);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(rows(), ElementsAre("b.png", "a.png"));
}

TEST_F(InputQueue, ManyDropsInABurstAreOneBatch)
{
    std::size_t expanded = 0;
    m_services.expand = [&](const auto& inputs, std::stop_token) {
        expanded = inputs.size();
        return std::vector<std::filesystem::path>{};
    };
    std::vector<std::filesystem::path> one(1);
    for (int i = 0; i < 100'000; ++i) {
        one.front() = "/d/" + std::to_string(i) + ".png";
        model().process(one);
    }
    m_delay->advance(150ms);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(expanded, 100'000U);
}

TEST_F(InputQueue, TheRealTimerStartsABatchToo)
{
    m_services.makeDelay = makeTimerDelay;
    m_services.debounce = 0ms;
    model().process({file("a.png")});
    ASSERT_TRUE(waitForStatus("Done"));
}

} // namespace
} // namespace lumora
