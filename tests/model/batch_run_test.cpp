// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

namespace lumora {
namespace {

using test::ModelTest;
using namespace std::chrono_literals;
using ::testing::ElementsAre;

class BatchRun : public ModelTest
{
};

TEST_F(BatchRun, OneFileIsOneImageWithOneWorker)
{
    drop({file("a.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(m_statuses, QStringList({QStringLiteral("Scanning for images..."),
                                       QStringLiteral("Optimizing 1 image with 1 worker..."),
                                       QStringLiteral("Optimized 1 of 1"), QStringLiteral("Done")}));
}

TEST_F(BatchRun, OneProcessorStillMeansTwoWorkers)
{
    m_services.activeProcessorCount = 1;
    m_gate.close();
    drop(files(2));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2 || !model().isProcessing(); }));
    EXPECT_EQ(model().statusText(), QStringLiteral("Optimizing 2 images with 2 workers..."));
    m_gate.open();
    EXPECT_TRUE(waitUntilDone());
}

TEST_F(BatchRun, AFixedNumberOfWorkersGoesBeforeTheProcessors)
{
    m_services.workers = 1;
    drop(files(3));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_statuses.contains(QStringLiteral("Optimizing 3 images with 1 worker...")));
    EXPECT_EQ(m_gate.mostInFlight(), 1U);
    EXPECT_THAT(m_gate.started(), ElementsAre("0.png", "1.png", "2.png"));
}

TEST_F(BatchRun, NeverMoreThanOneFileAWorkerIsInFlight)
{
    drop(files(100));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_statuses.contains(QStringLiteral("Optimizing 100 images with 8 workers...")));
    EXPECT_LE(m_gate.mostInFlight(), 8U);
    EXPECT_EQ(model().resultCount(), 100);
    EXPECT_EQ(m_stats.stats().filesSucceeded, 100);
}

TEST_F(BatchRun, RowsStandInTheOrderOfFinishingNewestFirst)
{
    m_gate.close();
    drop(files(3));
    int row = 0;
    for (const char* name : {"1.png", "2.png", "0.png"}) {
        m_gate.letGo(name);
        ++row;
        ASSERT_TRUE(test::waitUntil([&] { return model().resultCount() == row; }));
    }
    EXPECT_THAT(rows(), ElementsAre("0.png", "2.png", "1.png"));
}

TEST_F(BatchRun, AnObserverLearnsOfOneRowAtATime)
{
    std::vector<int> counts;
    QObject::connect(&model(), &ProcessingModel::resultInserted,
                     [&] { counts.push_back(model().resultCount()); });
    drop(files(3));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(counts, ElementsAre(1, 2, 3));
}

TEST_F(BatchRun, FilesThatFailAreRowsAndCountLikeOthers)
{
    drop(files(3, "bad"));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(m_statuses.mid(2),
              QStringList({QStringLiteral("Optimized 1 of 3"), QStringLiteral("Optimized 2 of 3"),
                           QStringLiteral("Optimized 3 of 3"), QStringLiteral("Done")}));
    for (int row = 0; row < 3; ++row) {
        const ProcessingResult& result = model().resultAt(row);
        EXPECT_FALSE(result.isSuccess);
        EXPECT_EQ(result.message, "The image could not be read.");
        EXPECT_EQ(result.outputURL, std::nullopt);
        EXPECT_EQ(result.originalBytes + result.outputBytes, 0);
    }
    EXPECT_EQ(m_stats.stats().filesProcessed, 3);
    EXPECT_EQ(m_stats.stats().filesSucceeded, 0);
}

TEST_F(BatchRun, ProgressCountsTheRunningBatch)
{
    m_gate.close();
    drop(files(2));
    EXPECT_EQ(model().totalCount(), 0);
    ASSERT_TRUE(test::waitUntil([&] { return model().totalCount() == 2; }));
    m_gate.letGo("0.png");
    ASSERT_TRUE(test::waitUntil([&] { return model().completedCount() == 1; }));
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().completedCount(), 2);
}

TEST_F(BatchRun, CompletionIsToldOnceAndAfterTheLastStatus)
{
    QStringList seen;
    model().setOnComplete([&] { seen.append(model().statusText()); });
    drop({file("a.png")});
    ASSERT_TRUE(waitUntilDone());
    drop({file("b.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(seen, QStringList(QStringLiteral("Done")));
}

TEST_F(BatchRun, WithoutStatisticsNothingIsRecorded)
{
    ProcessingModel silent([this] { return test::settings(m_settings); }, nullptr, m_services);
    silent.process({file("a.png")});
    m_delay->advance(150ms);
    ASSERT_TRUE(test::waitUntil([&] { return !silent.isProcessing(); }));
    EXPECT_EQ(silent.resultCount(), 1);
    EXPECT_EQ(m_stats.stats().filesProcessed, 0);
}

} // namespace
} // namespace lumora
