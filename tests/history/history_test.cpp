// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/history/history_harness.h"

#include "history/file_state.h"
#include "system/content_digest.h"
#include "system/regular_file.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::HistoryTest;
using test::writeFile;
using testing::ElementsAre;
using testing::IsEmpty;

FileRecord written(const fs::path& source, const fs::path& output)
{
    const auto content = openRegularFile(output);
    return {.source = source,
            .output = output,
            .originalBytes = 10,
            .outputBytes = 4,
            .isSuccess = true,
            .message = "Saved 6 bytes",
            .trace = {.source = FileState{10, -5},
                      .output = stateAt(output),
                      .outputDigest = contentDigest(content->get()).value()}};
}

TEST_F(HistoryTest, RemembersEverythingAboutABatch)
{
    const fs::path source = "/in/\xFF\n.jpg";
    writeFile(m_folder / "a.webp", "webp");
    FileRecord file = written(source, m_folder / "a.webp");
    file.trace.isOriginalTrashed = true;
    file.trace.trashedOriginal = "/Trash/files/\xFE.jpg";
    file.trace.replaced = FileState{1, 2};
    file.trace.trashedReplaced = "/Trash/files/a.webp";
    {
        const auto history = open();
        const auto batch = history->begin("lumora-cli", "webp, quality 82");
        history->add(batch, file);
        history->add(batch, row("/in/b.jpg"));
    }
    const auto history = open();
    const auto batches = history->batches().value();
    ASSERT_EQ(batches.size(), 1u);
    EXPECT_EQ(batches[0].batch.origin, "lumora-cli");
    EXPECT_EQ(batches[0].batch.settings, "webp, quality 82");
    EXPECT_EQ(batches[0].files, 2);
    EXPECT_EQ(batches[0].written, 1);
    EXPECT_EQ(batches[0].originalBytes, 10);
    EXPECT_EQ(batches[0].outputBytes, 4);
    const auto files = history->filesOf(batches[0].batch.id).value();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].source, source);
    EXPECT_EQ(files[0].output, file.output);
    EXPECT_EQ(files[0].message, file.message);
    EXPECT_TRUE(files[0].isSuccess);
    EXPECT_EQ(files[0].trace.source, file.trace.source);
    EXPECT_EQ(files[0].trace.output, file.trace.output);
    EXPECT_EQ(files[0].trace.outputDigest, file.trace.outputDigest);
    EXPECT_TRUE(files[0].trace.isOriginalTrashed);
    EXPECT_EQ(files[0].trace.trashedOriginal, file.trace.trashedOriginal);
    EXPECT_EQ(files[0].trace.replaced, file.trace.replaced);
    EXPECT_EQ(files[0].trace.trashedReplaced, file.trace.trashedReplaced);
    EXPECT_EQ(files[1].output, std::nullopt);
    EXPECT_FALSE(files[1].isSuccess);
    EXPECT_EQ(files[1].message, "The image could not be read.");
    EXPECT_THAT(m_complaints, IsEmpty());
}

TEST_F(HistoryTest, ListsTheNewestBatchFirst)
{
    remember(1);
    remember(2);
    remember(3);
    std::vector<std::int64_t> files;
    const auto history = open();
    const auto batches = history->batches().value();
    files.reserve(batches.size());
    for (const BatchSummary& summary : batches)
        files.push_back(summary.files);
    EXPECT_THAT(files, ElementsAre(3, 2, 1));
}

TEST_F(HistoryTest, IsForNobodyElseToRead)
{
    remember(1);
    const auto others = fs::perms::group_all | fs::perms::others_all;
    EXPECT_EQ(fs::status(file()).permissions() & others, fs::perms::none);
}

TEST_F(HistoryTest, DropsTheOldestFilesBeyondItsLimit)
{
    EXPECT_TRUE(open()->setLimits({.files = 5, .days = 365}));
    remember(4);
    remember(3);
    EXPECT_EQ(rowsOfAll(), 5u);
    remember(6);
    EXPECT_EQ(open()->batches().value().size(), 1u);
}

TEST_F(HistoryTest, DropsTheOldestFilesOfABatchThatIsStillWritten)
{
    EXPECT_TRUE(open()->setLimits({.files = 5, .days = 365}));
    const auto history = open();
    const auto batch = history->begin("here", "");
    for (int number = 0; number < 7; ++number) {
        history->add(batch, row("/in/" + std::to_string(number) + ".jpg"));
        EXPECT_EQ(history->batches().value()[0].files, std::min(number + 1, 5));
    }
    EXPECT_EQ(history->filesOf(batch->id).value()[0].source, "/in/2.jpg");
}

TEST_F(HistoryTest, DropsBatchesThatAreTooOld)
{
    EXPECT_TRUE(open()->setLimits({.files = 100, .days = 2}));
    {
        const auto history = open();
        const auto batch = history->begin("old", "");
        batch->time -= std::int64_t{3} * 86'400;
        history->add(batch, row("/in/a.jpg"));
        EXPECT_THAT(history->batches().value(), IsEmpty());
    }
    remember(1);
    EXPECT_EQ(rowsOfAll(), 1u);
}

TEST_F(HistoryTest, FindsTheLastTimeThatAFileWasWritten)
{
    writeFile(m_folder / "a.webp", "webp");
    const auto history = open();
    for (const char* origin : {"first", "second"})
        history->add(history->begin(origin, ""), written("/in/a.jpg", m_folder / "a.webp"));
    const auto batches = history->batches().value();
    const auto found = history->lastOf("/in/a.jpg", m_folder / "a.webp").value();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].id, history->filesOf(batches[0].batch.id).value()[0].id);
    EXPECT_THAT(history->lastOf("/in/b.jpg", m_folder / "a.webp").value(), IsEmpty());
}

TEST_F(HistoryTest, KnowsTheLastBatchWithAnOutputThatWasNotTakenBack)
{
    writeFile(m_folder / "a.webp", "webp");
    const auto history = open();
    EXPECT_THAT(history->lastToUndo().value(), IsEmpty());
    history->add(history->begin("first", ""), written("/in/a.jpg", m_folder / "a.webp"));
    history->add(history->begin("second", ""), written("/in/b.jpg", m_folder / "a.webp"));
    history->add(history->begin("failed", ""), row("/in/c.jpg"));
    EXPECT_EQ(history->lastToUndo().value()[0].batch.origin, "second");
    history->markUndone({history->lastOf("/in/b.jpg", m_folder / "a.webp").value()[0].id});
    EXPECT_EQ(history->lastToUndo().value()[0].batch.origin, "first");
    EXPECT_EQ(history->lastToUndo().value()[0].written, 1);
}

TEST_F(HistoryTest, SumsOneBatchUp)
{
    const auto history = open();
    for (const char* origin : {"first", "second"}) {
        const auto batch = history->begin(origin, "");
        history->add(batch, row("/in/a.jpg"));
        history->add(batch, row("/in/b.jpg"));
    }
    const auto first = history->batches().value()[1].batch.id;
    const auto found = history->batch(first).value();
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].batch.origin, "first");
    EXPECT_EQ(found[0].files, 2);
    EXPECT_THAT(history->batch(first + 2).value(), IsEmpty());
}

TEST_F(HistoryTest, WhatIsStillToComeOfABatchIsRememberedWhenAllBeforeWasForgotten)
{
    const auto history = open();
    const auto batch = history->begin("here", "");
    history->add(batch, row("/in/a.jpg"));
    EXPECT_TRUE(history->clear());
    EXPECT_THAT(history->batches().value(), IsEmpty());
    history->add(batch, row("/in/b.jpg"));
    const auto batches = history->batches().value();
    ASSERT_EQ(batches.size(), 1u);
    EXPECT_EQ(history->filesOf(batches[0].batch.id).value()[0].source, "/in/b.jpg");
}

TEST_F(HistoryTest, ForgetsAll)
{
    remember(3);
    EXPECT_TRUE(open()->clear());
    EXPECT_EQ(rowsOfAll(), 0u);
    for (const auto& entry : fs::recursive_directory_iterator(data())) {
        if (!entry.is_regular_file()) continue;
        EXPECT_EQ(test::readFile(entry.path()).find("/in/"), std::string::npos) << entry.path();
    }
}

TEST_F(HistoryTest, KnowsItsOwnOutputsWhileTheyAreUntouched)
{
    const fs::path output = m_folder / "a.webp";
    writeFile(output, "webp");
    const auto history = open();
    EXPECT_FALSE(history->isOwnOutput(output, "/in/a.jpg"));
    const auto batch = history->begin("test", "");
    history->add(batch, written("/in/a.jpg", output));
    EXPECT_TRUE(history->isOwnOutput(output, "/in/a.jpg"));
    EXPECT_FALSE(history->isOwnOutput(output, "/in/b.jpg"));
    writeFile(output, "pewb");
    EXPECT_FALSE(history->isOwnOutput(output, "/in/a.jpg"));
    EXPECT_FALSE(history->isOwnOutput(m_folder / "missing", "/in/a.jpg"));
}

TEST_F(HistoryTest, KnowsTheContentOfItsOutputsWhereverTheyLie)
{
    writeFile(m_folder / "a.webp", "webp");
    const auto history = open();
    history->add(history->begin("test", ""), written("/in/a.jpg", m_folder / "a.webp"));
    fs::rename(m_folder / "a.webp", m_folder / "moved.webp");
    EXPECT_TRUE(history->isOptimized(m_folder / "moved.webp"));
    writeFile(m_folder / "other.webp", "pewb");
    EXPECT_FALSE(history->isOptimized(m_folder / "other.webp"));
}

// What two programs do, each with its own connection.
TEST_F(HistoryTest, TheFirstFileOfABatchWaitsForNoOther)
{
    History history(file(), History::complainOnStandardError, std::chrono::hours(1));
    for (const std::size_t batches : {1U, 2U}) {
        history.add(history.begin("test", ""), row("/in/a.jpg"));
        const auto reader = open();
        const auto given = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (reader->batches().value().size() < batches && std::chrono::steady_clock::now() < given)
            std::this_thread::yield();
        EXPECT_EQ(reader->batches().value().size(), batches);
    }
}

TEST_F(HistoryTest, LosesNothingWhenTwoWriteAtOnce)
{
    constexpr int batches = 10;
    constexpr int rows = 100;
    const auto write = [this] {
        for (int number = 0; number < batches; ++number) {
            History history(file());
            const auto batch = history.begin("test", "");
            for (int i = 0; i < rows; ++i)
                history.add(batch, row("/in/a.jpg"));
        }
    };
    std::thread first(write);
    std::thread second(write);
    first.join();
    second.join();
    EXPECT_EQ(open()->batches().value().size(), 2u * batches);
    EXPECT_EQ(rowsOfAll(), 2u * batches * rows);
}

} // namespace
} // namespace lumora
