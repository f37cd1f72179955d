// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/undo.h"

#include "history/file_state.h"
#include "system/content_digest.h"
#include "system/regular_file.h"
#include "system/trash.h"
#include "tests/history/history_harness.h"
#include "tests/support/trash_home.h"

#include <thread>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::readFile;
using test::writeFile;
using testing::ElementsAre;

// NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the test framework deletes it
const auto* const home = testing::AddGlobalTestEnvironment(new test::TrashHome);

class Undo : public test::HistoryTest
{
protected:
    // As a batch leaves it: the output written, the original in the Trash, an older output there too.
    FileRecord optimized(const std::string& name)
    {
        const fs::path source = m_folder / (name + ".jpg");
        const fs::path output = m_folder / (name + ".webp");
        writeFile(source, "original of " + name);
        FileRecord file{.source = source, .output = output, .isSuccess = true, .message = "Converted"};
        file.trace.source = stateAt(source);
        return file;
    }

    void write(FileRecord& file) const
    {
        writeFile(*file.output, "output of " + file.source.stem().string());
        file.trace.output = stateAt(*file.output);
        file.trace.outputDigest = contentDigest(openRegularFile(*file.output)->get()).value();
    }

    static fs::path trash(const fs::path& path)
    {
        const auto stamp = linkStamp(path);
        EXPECT_TRUE(moveToTrash(path));
        return placeInTrash(path, *stamp).value();
    }

    static void trashOriginal(FileRecord& file)
    {
        file.trace.isOriginalTrashed = true;
        file.trace.trashedOriginal = trash(file.source);
    }

    // Written where the batch had to make two folders first, one within the other.
    FileRecord inMadeFolders(const std::string& name)
    {
        FileRecord file = optimized(name);
        file.output = m_folder / "made" / "within" / (name + ".webp");
        if (fs::create_directories(file.output->parent_path()))
            file.trace.madeFolders = {m_folder / "made", m_folder / "made" / "within"};
        write(file);
        return file;
    }

    void replaceOlder(FileRecord& file) const
    {
        writeFile(*file.output, "older");
        file.trace.replaced = stateAt(*file.output);
        file.trace.trashedReplaced = trash(*file.output);
    }

    std::vector<UndoneFile> undo(UndoMode mode = UndoMode::forReal)
    {
        const auto history = open();
        std::vector<UndoneFile> rows;
        const auto report = [&rows](const UndoneFile& file) { rows.push_back(file); };
        EXPECT_TRUE(undoBatch(*history, history->batches().value().front().batch.id, mode, report));
        return rows;
    }

    void rememberAll(const std::vector<FileRecord>& files)
    {
        const auto history = open();
        const auto batch = history->begin("test", "");
        for (const FileRecord& file : files)
            history->add(batch, file);
    }
};

MATCHER_P(SaysUndone, message, "")
{
    return arg.isUndone && arg.message == message;
}

MATCHER_P(SaysLeft, message, "")
{
    return !arg.isUndone && arg.message == message;
}

TEST_F(Undo, BringsTheOriginalAndWhatWasReplacedBackWithTheirTimes)
{
    FileRecord file = optimized("a");
    const auto sourceState = file.trace.source;
    replaceOlder(file);
    const auto olderState = file.trace.replaced;
    write(file);
    trashOriginal(file);
    rememberAll({file, row("/in/failed.jpg")});
    EXPECT_THAT(undo(UndoMode::dryRun), ElementsAre(SaysUndone("Would be undone")));
    EXPECT_FALSE(fs::exists(file.source));
    EXPECT_THAT(undo(), ElementsAre(SaysUndone("Undone")));
    EXPECT_EQ(readFile(file.source), "original of a");
    EXPECT_EQ(stateAt(file.source), sourceState);
    EXPECT_EQ(readFile(*file.output), "older");
    EXPECT_EQ(stateAt(*file.output), olderState);
    EXPECT_FALSE(fs::exists(*file.trace.trashedOriginal));
    const fs::path info = file.trace.trashedOriginal->parent_path().parent_path() / "info/a.jpg.trashinfo";
    EXPECT_FALSE(fs::exists(info));
}

TEST_F(Undo, RemovesTheFoldersThatTheBatchMadeOnceTheyAreEmpty)
{
    const FileRecord first = inMadeFolders("first");
    const FileRecord second = inMadeFolders("second");
    rememberAll({first, second});
    undo(UndoMode::dryRun);
    EXPECT_TRUE(fs::exists(*first.output));
    {
        const auto history = open();
        const auto files = history->filesOf(1).value();
        undoFiles(*history, {files[0]}, UndoMode::forReal, [](const UndoneFile&) {});
        EXPECT_FALSE(fs::exists(*first.output));
        EXPECT_TRUE(fs::exists(*second.output));
        undoFiles(*history, {files[1]}, UndoMode::forReal, [](const UndoneFile&) {});
    }
    EXPECT_FALSE(fs::exists(m_folder / "made"));
    EXPECT_TRUE(fs::exists(first.source));
}

TEST_F(Undo, LeavesFoldersThatItDidNotMake)
{
    fs::create_directories(m_folder / "made" / "within");
    const FileRecord file = inMadeFolders("a");
    rememberAll({file});
    undo();
    EXPECT_TRUE(fs::exists(m_folder / "made" / "within"));
    EXPECT_FALSE(fs::exists(*file.output));
}

TEST_F(Undo, TwiceIsHarmless)
{
    FileRecord file = optimized("twice");
    write(file);
    rememberAll({file});
    EXPECT_THAT(undo(), ElementsAre(SaysUndone("Undone")));
    writeFile(*file.output, "output of twice"); // somebody's, though it looks like ours
    EXPECT_THAT(undo(), ElementsAre(SaysUndone("Undone already")));
    EXPECT_EQ(readFile(*file.output), "output of twice");
}

// What the output had replaced comes to stand where the output was: nobody may take the one for the other.
TEST_F(Undo, ByTwoProgramsAtOnceBringsBackWhatWasReplaced)
{
    constexpr int files = 60;
    std::vector<FileRecord> batch;
    for (int number = 0; number < files; ++number) {
        FileRecord& made = batch.emplace_back(optimized(std::to_string(number)));
        replaceOlder(made);
        write(made);
        trashOriginal(made);
    }
    rememberAll(batch);
    const auto undoAll = [this] {
        History history(file());
        undoBatch(history, 1, UndoMode::forReal, [](const UndoneFile&) {});
    };
    {
        const std::jthread other(undoAll);
        undoAll();
    }
    for (int number = 0; number < files; ++number) {
        EXPECT_EQ(readFile(m_folder / (std::to_string(number) + ".jpg")),
                  "original of " + std::to_string(number));
        EXPECT_EQ(readFile(m_folder / (std::to_string(number) + ".webp")), "older");
    }
}

TEST_F(Undo, LeavesAnOutputThatWasChanged)
{
    FileRecord file = optimized("changed");
    write(file);
    trashOriginal(file);
    rememberAll({file});
    writeFile(*file.output, "OUTPUT of changed");
    const char* const message =
        "The output is left as it is: the output was changed since. The original came back";
    EXPECT_THAT(undo(), ElementsAre(SaysLeft(message)));
    EXPECT_EQ(readFile(*file.output), "OUTPUT of changed");
    EXPECT_EQ(readFile(file.source), "original of changed");
}

TEST_F(Undo, LeavesAllWhereTheOriginalsPlaceIsTaken)
{
    FileRecord file = optimized("taken");
    write(file);
    trashOriginal(file);
    rememberAll({file});
    writeFile(file.source, "another");
    EXPECT_THAT(undo(), ElementsAre(SaysLeft("Left as it is: another file has the original's place")));
    EXPECT_EQ(readFile(file.source), "another");
    EXPECT_EQ(readFile(*file.output), "output of taken");
    fs::remove(file.source);
    EXPECT_THAT(undo(), ElementsAre(SaysUndone("Undone")));
}

TEST_F(Undo, LeavesAllWhereTheOriginalsFolderIsGone)
{
    fs::create_directory(m_folder / "sub");
    FileRecord file = optimized("sub/a");
    file.output = m_folder / "a.webp";
    write(file);
    trashOriginal(file);
    rememberAll({file});
    fs::remove(m_folder / "sub");
    const auto says =
        SaysLeft("Left as it is: the original's folder is no longer there; the original is in the Trash");
    EXPECT_THAT(undo(UndoMode::dryRun), ElementsAre(says));
    EXPECT_THAT(undo(), ElementsAre(says));
    EXPECT_TRUE(fs::exists(*file.output));
    fs::create_directory(m_folder / "sub");
    EXPECT_THAT(undo(), ElementsAre(SaysUndone("Undone")));
}

TEST_F(Undo, LeavesTheOutputThatIsAllThatIsLeft)
{
    FileRecord emptied = optimized("emptied");
    write(emptied);
    trashOriginal(emptied);
    FileRecord deleted = optimized("deleted");
    write(deleted);
    rememberAll({emptied, deleted});
    fs::remove(*emptied.trace.trashedOriginal);
    fs::remove(deleted.source);
    EXPECT_THAT(undo(), ElementsAre(SaysLeft("Left as it is: the original is no longer there"),
                                    SaysLeft("Left as it is: the original is not found in the Trash")));
    EXPECT_EQ(readFile(*emptied.output), "output of emptied");
    EXPECT_EQ(readFile(*deleted.output), "output of deleted");
}

TEST_F(Undo, TakesNoStrangersFileForTheOneInTheTrash)
{
    FileRecord file = optimized("exchanged");
    write(file);
    trashOriginal(file);
    rememberAll({file});
    writeFile(*file.trace.trashedOriginal, "another one of that name");
    EXPECT_THAT(undo(), ElementsAre(SaysLeft("Left as it is: the original is not found in the Trash")));
    EXPECT_FALSE(fs::exists(file.source));
}

// Whatever a killed undo has done of its steps, the next one does the others.
TEST_F(Undo, GoesOnWhereItWasCutOff)
{
    for (const int steps : {1, 2, 3}) {
        FileRecord file = optimized("cut" + std::to_string(steps));
        replaceOlder(file);
        write(file);
        trashOriginal(file);
        rememberAll({file});
        ASSERT_TRUE(takeFromTrash(*file.trace.trashedOriginal, file.source));
        if (steps >= 2) trash(*file.output);
        const bool isLast = steps < 3 || takeFromTrash(*file.trace.trashedReplaced, *file.output);
        ASSERT_TRUE(isLast);
        const auto rows = undo();
        ASSERT_EQ(rows.size(), 1u);
        EXPECT_TRUE(rows[0].isUndone) << rows[0].message;
        EXPECT_EQ(readFile(file.source), "original of cut" + std::to_string(steps));
        EXPECT_EQ(readFile(*file.output), "older");
    }
}

TEST_F(Undo, SaysThatWhatWasReplacedIsGone)
{
    FileRecord file = optimized("half");
    replaceOlder(file);
    write(file);
    rememberAll({file});
    fs::remove(*file.trace.trashedReplaced);
    EXPECT_THAT(undo(), ElementsAre(SaysLeft(
                            "Undone in part: what the output had replaced is not found in the Trash")));
    EXPECT_FALSE(fs::exists(*file.output));
}

} // namespace
} // namespace lumora
