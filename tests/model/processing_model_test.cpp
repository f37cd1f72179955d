// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

#include <atomic>
#include <thread>

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

TEST_F(Cancelling, AtOnceKillsWhatRuns)
{
    m_gate.close();
    m_services.workers = 2;
    drop(files(10));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 2; }));
    model().cancelNow();
    ASSERT_TRUE(waitUntilDone());
    for (int row = 0; row < model().resultCount(); ++row)
        EXPECT_EQ(model().resultAt(row).message, "killed");
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
    ASSERT_TRUE(test::waitUntil([&] { return model().totalCount() == 10; }));
    m_model.reset();
    EXPECT_EQ(m_gate.inFlight(), 0U);
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

class FolderGrants : public ModelTest
{
protected:
    std::vector<std::string> m_asked;
    std::string m_refused;

    void SetUp() override
    {
        m_services.requestSaveAccess = [this](const auto& folder) -> std::optional<std::filesystem::path> {
            m_asked.push_back(folder.filename().string());
            if (folder.filename() == m_refused) return std::nullopt;
            return folder;
        };
    }
    std::vector<std::filesystem::path> filesOfThreeFolders()
    {
        std::vector<std::filesystem::path> made;
        for (int i = 0; i < 50; ++i)
            made.push_back(m_directory / ("f" + std::to_string(i % 3)) / (std::to_string(i) + ".png"));
        return made;
    }
};

TEST_F(FolderGrants, EachFolderIsAskedForOnceARunInOrderOfAppearance)
{
    for (int run = 0; run < 2; ++run) {
        drop(filesOfThreeFolders());
        ASSERT_TRUE(waitUntilDone());
        EXPECT_THAT(m_asked, ElementsAre("f0", "f1", "f2"));
    }
    EXPECT_EQ(model().resultCount(), 100);
}

TEST_F(FolderGrants, ARefusalEndsTheBatchAndEarlierGrantsStay)
{
    bool completed = false;
    m_refused = "f1";
    model().setOnComplete([&] { completed = true; });
    drop(filesOfThreeFolders());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().statusText(), QStringLiteral("Save permission needed"));
    EXPECT_TRUE(completed);
    EXPECT_TRUE(m_gate.started().empty());

    m_refused.clear();
    drop(filesOfThreeFolders());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(m_asked, ElementsAre("f0", "f1", "f1", "f2"));
}

TEST_F(FolderGrants, ASelectedFolderNeedsNone)
{
    m_settings.destinationMode = DestinationMode::selectedFolder;
    drop(filesOfThreeFolders());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_asked.empty());
}

TEST_F(FolderGrants, OnlyASandboxAsks)
{
    const SaveAccessRequest refusing = [](const auto&) { return std::nullopt; };
    const auto marker = file("flatpak-info");
    EXPECT_EQ(saveAccessRequest(refusing, marker)("/a/b"), "/a/b");
    test::writeFile(marker, "");
    EXPECT_EQ(saveAccessRequest(refusing, marker)("/a/b"), std::nullopt);
}

TEST_F(FolderGrants, ThePanelNamesTheFolder)
{
    EXPECT_EQ(saveAccessMessage("/a/My photos"), "Allow Lumora to save converted images in My photos.");
    EXPECT_EQ(saveAccessMessage("/"), "Allow Lumora to save converted images in /.");
}

class OverwriteQuestions : public ModelTest
{
protected:
    std::vector<std::string> m_asked;

    ProcessingResult optimize(const std::filesystem::path& file, const OptimizerSettings& settings,
                              const OptimizerServices& services) override
    {
        ModelTest::optimize(file, settings, services);
        if (!services.confirmOverwrite(file)) throw ImageOptimizerError::overwriteDeclined();
        return {file, file, 100, 60, "Replaced", true};
    }
};

TEST_F(OverwriteQuestions, AreAskedOneAtATimeOnTheMainThread)
{
    const auto mainThread = std::this_thread::get_id();
    bool isOpen = false;
    m_services.confirmOverwrite = [&](const std::filesystem::path& output) {
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
        EXPECT_FALSE(isOpen);
        isOpen = true;
        test::handleEvents(); // a dialog: meanwhile other questions come
        isOpen = false;
        return output.filename() == "1.png";
    };
    drop(files(20));
    ASSERT_TRUE(waitUntilDone());
    for (int row = 0; row < 20; ++row) {
        const bool isReplaced = model().resultAt(row).sourceURL.filename() == "1.png";
        EXPECT_EQ(model().resultAt(row).isSuccess, isReplaced);
    }
}

TEST_F(OverwriteQuestions, HoldUpTheirOwnFileOnly)
{
    m_services.workers = 2;
    m_gate.close();
    m_services.confirmOverwrite = [&](const std::filesystem::path& output) {
        if (output.filename() != "0.png") return true;
        m_gate.letGo("1.png");
        return test::waitUntil([&] { return m_gate.started().size() == 2; });
    };
    m_gate.letGo("0.png");
    drop(files(2));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(m_stats.stats().filesSucceeded, 2);
}

TEST_F(OverwriteQuestions, WithoutAnybodyToAskAreSkipped)
{
    drop(files(2));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultAt(0).message, "Skipped because the output file already exists.");
}

TEST_F(OverwriteQuestions, CancellingAtOnceSkipsThoseNotYetShown)
{
    m_services.workers = 8;
    int asked = 0;
    m_services.confirmOverwrite = [&](const std::filesystem::path&) {
        ++asked;
        model().cancelNow();
        return false;
    };
    drop(files(8));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(asked, 1);
}

TEST_F(OverwriteQuestions, DestructionAnswersThemWithSkip)
{
    m_services.confirmOverwrite = [&](const std::filesystem::path&) {
        ADD_FAILURE() << "nobody is left to answer";
        return true;
    };
    m_gate.close();
    drop(files(4));
    ASSERT_TRUE(test::waitUntil([&] { return model().totalCount() == 4; }));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 4; }));
    m_gate.open();
    while (m_gate.inFlight() != 0) // no events from here on: the questions are put and not shown
        std::this_thread::yield();
    m_model.reset();
    EXPECT_EQ(m_stats.stats().filesProcessed, 0);
}

} // namespace
} // namespace lumora
