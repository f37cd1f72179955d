// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked before the history takes something back, and what becomes of the answer.
#include "app/history_commands.h"

#include "history/file_state.h"
#include "history/history.h"
#include "model/processing_model.h"
#include "tests/app/answer.h"
#include "tests/app/wait_for.h"
#include "tests/support/files.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using std::filesystem::path;
using test::Answer;
using test::waitFor;

class HistoryCommandsTest : public testing::Test
{
protected:
    ~HistoryCommandsTest() override { history().clear(); }

    History& history() { return *m_commands.history(); }
    ProcessingServices services()
    {
        ProcessingServices services;
        services.history = [this] { return m_commands.history(); };
        return services;
    }
    // One batch; its outputs exist.
    std::int64_t remember(const std::vector<const char*>& names)
    {
        const auto batch = history().begin("lumora", "webp, quality 82");
        for (const char* name : names) {
            const path source = m_folder / name;
            FileRecord file{.source = source, .output = outputOf(name), .isSuccess = true};
            test::writeFile(source, "original");
            test::writeFile(*file.output, "output");
            file.trace = {.source = stateAt(source), .output = stateAt(*file.output)};
            history().add(batch, file);
        }
        return history().batches()->front().batch.id;
    }
    path outputOf(const char* name) { return path(m_folder / name).replace_extension(".webp"); }
    bool isThere(const char* name) { return std::filesystem::exists(outputOf(name)); }
    bool waitForEnd(int results)
    {
        return waitFor([&] { return m_model.resultCount() == results && !m_model.isProcessing(); });
    }

    test::TemporaryDirectory m_folder;
    HistoryCommands m_commands;
    ProcessingModel m_model{[] { return test::settings(); }, nullptr, services()};
};

TEST_F(HistoryCommandsTest, TakesAnOlderBatchBackOnceTheUserAgrees)
{
    const std::int64_t older = remember({"a.jpg", "b.jpg"});
    remember({"c.jpg"});
    const Answer yes(QStringLiteral("Undo"));
    m_commands.undoBatch(older, m_model, nullptr);
    ASSERT_TRUE(waitForEnd(2));
    EXPECT_EQ(yes.text(), QStringLiteral("Undo this batch?"));
    EXPECT_TRUE(yes.informativeText().startsWith(QStringLiteral("The outputs of 2 images go to the Trash.")));
    EXPECT_FALSE(isThere("a.jpg"));
    EXPECT_FALSE(isThere("b.jpg"));
    EXPECT_TRUE(isThere("c.jpg"));
}

TEST_F(HistoryCommandsTest, LeavesABatchAloneThatTheUserKeeps)
{
    const std::int64_t batch = remember({"a.jpg"});
    const Answer no(QStringLiteral("Cancel"));
    m_commands.undoBatch(batch, m_model, nullptr);
    ASSERT_TRUE(waitFor([&] { return !no.text().isEmpty() && !test::shownDialog(); }));
    EXPECT_FALSE(m_model.isProcessing());
    EXPECT_TRUE(isThere("a.jpg"));
}

TEST_F(HistoryCommandsTest, SaysThatABatchWasTakenBackBefore)
{
    const std::int64_t batch = remember({"a.jpg"});
    history().markUndone({history().filesOf(batch)->front().id});
    const Answer told(QStringLiteral("OK"));
    m_commands.undoBatch(batch, m_model, nullptr);
    ASSERT_TRUE(waitFor([&] { return !told.text().isEmpty(); }));
    EXPECT_EQ(told.text(), QStringLiteral("There is nothing to undo."));
    EXPECT_TRUE(isThere("a.jpg"));
}

TEST_F(HistoryCommandsTest, AsksBeforeSeveralFilesAreTakenBackButNotForOne)
{
    const auto files = history().filesOf(remember({"a.jpg", "b.jpg", "c.jpg"})).value();
    m_commands.undoFiles({files[0].id}, m_model, nullptr);
    ASSERT_TRUE(waitForEnd(1));
    EXPECT_FALSE(isThere("a.jpg"));
    const Answer no(QStringLiteral("Cancel"));
    m_commands.undoFiles({files[1].id, files[2].id}, m_model, nullptr);
    EXPECT_EQ(no.text(), QStringLiteral("Undo 2 images?"));
    EXPECT_TRUE(isThere("b.jpg"));
    const Answer yes(QStringLiteral("Undo"));
    m_commands.undoFiles({files[1].id, files[2].id}, m_model, nullptr);
    ASSERT_TRUE(waitForEnd(3));
    EXPECT_FALSE(isThere("b.jpg"));
    EXPECT_FALSE(isThere("c.jpg"));
}

} // namespace
} // namespace lumora
