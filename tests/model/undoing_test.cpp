// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/file_state.h"
#include "history/history.h"
#include "tests/model/model_harness.h"
#include "tests/support/trash_home.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::ModelTest;
using test::writeFile;
using testing::ElementsAre;

// NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the test framework deletes it
const auto* const home = testing::AddGlobalTestEnvironment(new test::TrashHome);

// Outputs lie beside their originals and are real.
class Undoing : public ModelTest
{
protected:
    Undoing()
    {
        m_services.history = [this] { return m_history; };
        m_services.keepsHistory = [this] { return m_keeps; };
        m_services.workers = 1;
    }

    ProcessingResult optimize(const fs::path& file, const OptimizerSettings& settings,
                              const OptimizerServices& services) override
    {
        ProcessingResult result = ModelTest::optimize(file, settings, services);
        result.outputURL = outputOf(file);
        writeFile(*result.outputURL, "output");
        if (services.trace) *services.trace = {.source = stateAt(file), .output = stateAt(*result.outputURL)};
        return result;
    }

    static fs::path outputOf(const fs::path& file) { return fs::path(file).replace_extension(".webp"); }

    void optimizeFiles(int count)
    {
        for (const fs::path& file : files(count))
            writeFile(file, "original");
        drop(files(count));
        ASSERT_TRUE(waitUntilDone());
    }
    std::int64_t lastBatch() { return m_history->lastToUndo().value().front().batch.id; }
    std::vector<std::string> messages()
    {
        std::vector<std::string> texts;
        texts.reserve(static_cast<std::size_t>(model().resultCount()));
        for (int row = 0; row < model().resultCount(); ++row)
            texts.push_back(model().resultAt(row).message);
        return texts;
    }

    std::shared_ptr<History> m_history = std::make_shared<History>(m_directory / "history.sqlite");
    bool m_keeps = true;
};

TEST_F(Undoing, TakesTheLastBatchBackAndSaysSoInItsRows)
{
    optimizeFiles(3);
    model().undoBatch(lastBatch());
    EXPECT_TRUE(model().isProcessing());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(messages(), ElementsAre("Undone", "Undone", "Undone"));
    EXPECT_EQ(model().resultAt(0).outputURL, std::nullopt);
    EXPECT_FALSE(model().resultAt(0).isSuccess);
    for (const fs::path& file : files(3)) {
        EXPECT_FALSE(fs::exists(outputOf(file)));
        EXPECT_TRUE(fs::exists(file));
    }
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_EQ(model().outcome().text(), QStringLiteral("3 undone"));
    EXPECT_EQ(model().completedCount(), 3);
    EXPECT_THAT(m_history->lastToUndo().value(), testing::IsEmpty());
}

TEST_F(Undoing, TakesOneRowBack)
{
    optimizeFiles(3);
    model().undo(1);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(messages(), ElementsAre("Saved", "Undone", "Saved"));
    EXPECT_TRUE(fs::exists(outputOf(file("0.png"))));
    EXPECT_FALSE(fs::exists(outputOf(file("1.png"))));
    EXPECT_EQ(m_history->filesOf(lastBatch()).value()[1].isUndone, true);
}

TEST_F(Undoing, LeavesWhatWasChangedSinceAndSaysWhy)
{
    optimizeFiles(2);
    writeFile(outputOf(file("0.png")), "somebody's work");
    model().undoBatch(lastBatch());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(messages(),
                ElementsAre("Undone", "The output is left as it is: the output was changed since"));
    EXPECT_EQ(model().resultAt(1).outputURL, outputOf(file("0.png")));
    EXPECT_EQ(model().outcome().text(), QStringLiteral("1 undone, 1 left as it is"));
    EXPECT_EQ(test::readFile(outputOf(file("0.png"))), "somebody's work");
}

TEST_F(Undoing, AddsRowsForFilesThatNoRowShows)
{
    optimizeFiles(2);
    model().clearResults();
    model().undoBatch(lastBatch());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(rows(), ElementsAre("0.png", "1.png"));
    EXPECT_THAT(messages(), ElementsAre("Undone", "Undone"));
}

TEST_F(Undoing, TakesChosenFilesBackTheLastOneFirstInWhateverOrderTheyWereChosen)
{
    optimizeFiles(3);
    const auto files = m_history->filesOf(lastBatch()).value();
    model().clearResults();
    model().undoFiles({files[2].id, files[0].id, files[1].id});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(rows(), ElementsAre("0.png", "1.png", "2.png"));
    EXPECT_THAT(messages(), ElementsAre("Undone", "Undone", "Undone"));
}

TEST_F(Undoing, FilesCanBeOptimizedAgainAfterwards)
{
    optimizeFiles(1);
    model().undo(0);
    ASSERT_TRUE(waitUntilDone());
    model().retry(0);
    m_delay->advance(std::chrono::milliseconds(150));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(messages(), ElementsAre("Saved"));
    EXPECT_EQ(model().outcome().text(), QString());
}

TEST_F(Undoing, DropsWaitForItsEnd)
{
    optimizeFiles(2);
    writeFile(file("late.png"), "original");
    model().undoBatch(lastBatch());
    model().process({file("late.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(messages(), ElementsAre("Saved", "Undone", "Undone"));
}

// Or a cancel would come too late for what nobody has seen yet.
TEST_F(Undoing, RunsNoFurtherAheadOfItsRowsThanCanBeCancelled)
{
    constexpr int count = 400;
    optimizeFiles(count);
    const auto areLeft = [this] {
        return std::ranges::count_if(files(count),
                                     [](const auto& file) { return fs::exists(outputOf(file)); });
    };
    model().undoBatch(lastBatch());
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
    while (areLeft() > 100 && std::chrono::steady_clock::now() < end) // and no row is shown
        std::this_thread::yield();
    EXPECT_GT(areLeft(), 100);
    model().cancel();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_GT(areLeft(), 100);
}

TEST_F(Undoing, CancellingLeavesTheRestAsItIs)
{
    optimizeFiles(5);
    QObject::connect(m_model.get(), &ProcessingModel::progressChanged, [&] {
        if (m_model->completedCount() == 0 && m_model->totalCount() == 5) m_model->cancel();
    });
    model().undoBatch(lastBatch());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(model().wasCancelled());
    const BatchOutcome outcome = model().outcome();
    EXPECT_EQ(outcome.undone + outcome.leftOut, 5);
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
}

TEST_F(Undoing, NothingIsTakenBackWhileABatchRuns)
{
    optimizeFiles(1);
    const std::int64_t batch = lastBatch();
    m_gate.close();
    writeFile(file("late.png"), "original");
    drop({file("late.png")});
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 1; }));
    EXPECT_FALSE(model().canUndo());
    model().undoBatch(batch);
    model().undo(0);
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(messages(), ElementsAre("Saved", "Saved"));
}

TEST_F(Undoing, ARowThatIsNotRememberedSaysSo)
{
    m_keeps = false;
    optimizeFiles(1);
    model().undo(0);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().statusText(), QStringLiteral("There is nothing to undo"));
    EXPECT_THAT(messages(), ElementsAre("Saved"));
    EXPECT_TRUE(fs::exists(outputOf(file("0.png"))));
}

TEST_F(Undoing, ThereIsNoUndoWithoutAHistory)
{
    m_history = nullptr;
    optimizeFiles(1);
    EXPECT_FALSE(model().canUndo());
    model().undo(0);
    EXPECT_FALSE(model().isProcessing());
}

TEST_F(Undoing, EndsWithTheModel)
{
    optimizeFiles(20);
    model().undoBatch(lastBatch());
    m_model.reset();
    for (const fs::path& file : files(20))
        EXPECT_TRUE(fs::exists(file));
}

} // namespace
} // namespace lumora
