// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/history/history_test.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QSignalSpy>

namespace lumora {
namespace {

using std::filesystem::path;
using test::HistoryViewTest;

class HistoryActionsTest : public HistoryViewTest
{
protected:
    void openThree()
    {
        add({written("/in/a.jpg"), failed("/in/b.jpg"), written("/in/c.jpg")});
        open();
    }
    void choose(int row) { fileList().setCurrentIndex(files().index(row)); }
    QAction* menuAction(HistoryRowsView& list, const QModelIndex& index, const char* text)
    {
        for (QAction* action : list.makeContextMenu(index)->actions()) {
            if (action->text() == QLatin1String(text)) return action;
        }
        return nullptr;
    }
    std::vector<path> undoneSources()
    {
        std::vector<path> sources;
        for (const FileRecord& file : undoneFiles)
            sources.push_back(file.source);
        return sources;
    }
};

TEST_F(HistoryActionsTest, ShowsTheOutputInItsFolderOrWhatIsLeft)
{
    FileRecord whole = real("whole.jpg");
    FileRecord left = real("left.jpg");
    std::filesystem::remove(*left.output);
    add({whole, left, failed("/in/b.jpg")});
    open();
    EXPECT_FALSE(chip("Show in Folder")->isEnabled());
    choose(0);
    chip("Show in Folder")->click();
    choose(1);
    fileList().setFocus();
    press(Qt::Key_Return);
    menuAction(fileList(), files().index(2), "Show in Folder")->trigger();
    EXPECT_EQ(shown, (std::vector<path>{*whole.output, left.source, "/in/b.jpg"}));
    menuAction(fileList(), files().index(0), "Open")->trigger();
    EXPECT_EQ(opened, (std::vector<path>{*whole.output}));
}

TEST_F(HistoryActionsTest, AsksForTheComparisonOfFilesWithAnOutput)
{
    openThree();
    QSignalSpy asked(view.get(), &HistoryView::compareRequested);
    choose(0);
    fileList().setFocus();
    press(Qt::Key_Space);
    EXPECT_EQ(asked.count(), 1);
    EXPECT_EQ(asked.last().at(1).toModelIndex().row(), 0);
    QTest::mouseDClick(fileList().viewport(), Qt::LeftButton, {},
                       fileList().visualRect(files().index(2)).center());
    EXPECT_EQ(asked.last().at(1).toModelIndex().row(), 2);
    choose(1);
    EXPECT_FALSE(chip("Compare")->isEnabled());
    press(Qt::Key_Space);
    EXPECT_EQ(asked.count(), 2);
}

TEST_F(HistoryActionsTest, GivesAComparisonItsResults)
{
    openThree();
    ComparableResults& results = files();
    EXPECT_TRUE(results.isComparable(results.index(2)));
    EXPECT_FALSE(results.isComparable(results.index(1)));
    const auto result = results.comparedResult(results.index(2));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->sourceURL, "/in/c.jpg");
    EXPECT_EQ(result->outputURL, "/in/c.webp");
    EXPECT_EQ(result->originalBytes, 4'000'000);
    EXPECT_TRUE(result->isSuccess);
    EXPECT_EQ(results.rowOf(result->id).row(), 2);
    search().setFilter(HistoryFilter::notWritten);
    ASSERT_TRUE(settle());
    EXPECT_FALSE(results.rowOf(result->id).isValid());
    search().setFilter(HistoryFilter::written);
    ASSERT_TRUE(settle());
    EXPECT_EQ(results.rowOf(result->id).row(), 1);
}

TEST_F(HistoryActionsTest, ReadsAComparedResultThatIsOutOfSight)
{
    add(many(500));
    open();
    EXPECT_FALSE(files().comparedResult(files().index(400)));
    ASSERT_TRUE(test::waitFor([&] { return files().comparedResult(files().index(400)).has_value(); }));
    EXPECT_EQ(files().comparedResult(files().index(400))->sourceURL, "/in/400.jpg");
}

TEST_F(HistoryActionsTest, HasTheChosenFilesUndone)
{
    openThree();
    EXPECT_FALSE(chip("Undo")->isEnabled());
    choose(1);
    EXPECT_FALSE(chip("Undo")->isEnabled()); // nothing was written
    choose(2);
    chip("Undo")->click();
    ASSERT_TRUE(test::waitFor([&] { return !undoneFiles.empty(); }));
    EXPECT_EQ(undoneSources(), (std::vector<path>{"/in/c.jpg"}));
    fileList().selectAll();
    fileList().setFocus();
    press(Qt::Key_U, Qt::ControlModifier);
    ASSERT_TRUE(test::waitFor([&] { return undoneFiles.size() == 2; }));
    EXPECT_EQ(undoneSources(), (std::vector<path>{"/in/a.jpg", "/in/c.jpg"}));
}

TEST_F(HistoryActionsTest, HasNoFileUndoneTwice)
{
    openThree();
    history->markUndone({files().found(files().index(0)).id});
    view->refresh();
    ASSERT_TRUE(test::waitFor([&] { return files().found(files().index(0)).isUndone; }));
    choose(0);
    EXPECT_FALSE(chip("Undo")->isEnabled());
    EXPECT_FALSE(menuAction(fileList(), files().index(0), "Undo")->isEnabled());
    fileList().selectAll();
    chip("Undo")->click();
    ASSERT_TRUE(test::waitFor([&] { return !undoneFiles.empty(); }));
    EXPECT_EQ(undoneSources(), (std::vector<path>{"/in/c.jpg"}));
}

TEST_F(HistoryActionsTest, HasTheChosenBatchUndone)
{
    add({written("/in/old.jpg")}, 9);
    openThree();
    chip("Undo Batch")->click();
    EXPECT_EQ(undoneBatches, std::vector<std::int64_t>{2});
    batchList().setFocus();
    press(Qt::Key_Down);
    press(Qt::Key_U, Qt::ControlModifier);
    menuAction(batchList(), batches().index(1), "Undo Batch")->trigger();
    EXPECT_EQ(undoneBatches, (std::vector<std::int64_t>{2, 1, 2}));
}

TEST_F(HistoryActionsTest, UndoesNothingWhereNobodyCan)
{
    add({written("/in/a.jpg")});
    HistoryActions fewer = actions();
    fewer.undoBatch = nullptr;
    fewer.undoFiles = nullptr;
    open(fewer);
    choose(0);
    EXPECT_FALSE(chip("Undo")->isEnabled());
    EXPECT_FALSE(chip("Undo Batch")->isEnabled());
    EXPECT_FALSE(menuAction(batchList(), batches().index(1), "Undo Batch")->isEnabled());
    batchList().setFocus();
    press(Qt::Key_U, Qt::ControlModifier);
    fileList().setFocus();
    press(Qt::Key_U, Qt::ControlModifier);
    EXPECT_TRUE(undoneFiles.empty());
}

TEST_F(HistoryActionsTest, UndoesNothingWhileFilesAreInWork)
{
    openThree();
    choose(0);
    view->setCanUndo(false);
    EXPECT_FALSE(chip("Undo")->isEnabled());
    EXPECT_FALSE(chip("Undo Batch")->isEnabled());
    EXPECT_FALSE(menuAction(fileList(), files().index(0), "Undo")->isEnabled());
    batchList().setFocus();
    press(Qt::Key_U, Qt::ControlModifier);
    EXPECT_TRUE(undoneBatches.empty());
    view->setCanUndo(true);
    EXPECT_TRUE(chip("Undo")->isEnabled());
    EXPECT_TRUE(chip("Undo Batch")->isEnabled());
}

TEST_F(HistoryActionsTest, CopiesAPath)
{
    openThree();
    choose(2);
    fileList().setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/in/c.webp"));
}

TEST_F(HistoryActionsTest, ChoosesUpwardsByMouseToo)
{
    openThree();
    const auto click = [this](int row, Qt::KeyboardModifiers modifiers) {
        QTest::mouseClick(fileList().viewport(), Qt::LeftButton, modifiers,
                          fileList().visualRect(files().index(row)).center());
    };
    click(2, {});
    click(0, Qt::ShiftModifier);
    EXPECT_EQ(fileList().selectionModel()->selectedRows().size(), 3);
}

} // namespace
} // namespace lumora
