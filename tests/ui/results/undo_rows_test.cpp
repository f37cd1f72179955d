// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/files.h"
#include "tests/ui/results/results_window.h"
#include "ui/results/results_list_model.h"

#include <QAction>

#include <gtest/gtest.h>

namespace lumora {
namespace {

using std::filesystem::path;

// Originals are files; outputs are none, so that there is nothing to move.
class UndoRows : public testing::Test, protected test::ResultsWindow
{
protected:
    UndoRows() { objects.history = std::make_shared<History>(objects.folder / "history.sqlite"); }

    void addOptimized(const char* name)
    {
        const path source = objects.folder / name;
        test::writeFile(source, "original");
        objects.addSuccess(source, 5000, 1000, "Optimized");
    }
    void undo(int row)
    {
        menuAction(row, "Undo")->trigger();
        ASSERT_TRUE(test::waitFor([this] { return !objects.model.isProcessing(); }));
        QCoreApplication::processEvents();
    }
    QString message(int row) { return at(row, ResultsListModel::MessageRole).toString(); }
};

TEST_F(UndoRows, ARowIsTakenBackFromItsMenu)
{
    addOptimized("a.jpg");
    addOptimized("b.jpg");
    undo(1);
    EXPECT_EQ(message(1), QStringLiteral("Undone. The output was gone already"));
    EXPECT_EQ(message(0), QStringLiteral("Optimized"));
    EXPECT_FALSE(at(1, ResultsListModel::HasOutputRole).toBool());
    EXPECT_EQ(at(1, ResultsListModel::OutcomeRole).toInt(), int(ResultsListModel::Outcome::skip));
    EXPECT_EQ(summary().first(), QStringLiteral("Files=1/2"));
    EXPECT_FALSE(menuAction(1, "Undo")->isEnabled());
    EXPECT_TRUE(menuAction(1, "Try Again")->isEnabled());
}

TEST_F(UndoRows, WhatStaysAsItIsSaysWhyAndIsNoFailure)
{
    addOptimized("a.jpg");
    std::filesystem::remove(objects.folder / "a.jpg");
    undo(0);
    EXPECT_EQ(message(0), QStringLiteral("Left as it is: the original is no longer there"));
    EXPECT_EQ(at(0, ResultsListModel::OutcomeRole).toInt(), int(ResultsListModel::Outcome::skip));
    EXPECT_EQ(at(0, Qt::AccessibleDescriptionRole).toString(), message(0));
    EXPECT_EQ(summary().first(), QStringLiteral("Files=1/1"));
    EXPECT_EQ(list->findChild<ResultsListModel*>()->failureCount(), 0);
}

TEST_F(UndoRows, IsNotOfferedForFailuresNorWhileABatchRuns)
{
    objects.addFailure("/photos/d.jpg", "The image could not be read.");
    EXPECT_FALSE(menuAction(0, "Undo")->isEnabled());
    addOptimized("a.jpg");
    EXPECT_TRUE(menuAction(0, "Undo")->isEnabled());
    objects.runUntil(1, 3);
    EXPECT_FALSE(menuAction(0, "Undo")->isEnabled());
}

TEST_F(UndoRows, IsNotOfferedWithoutAHistory)
{
    objects.history = nullptr;
    addOptimized("a.jpg");
    EXPECT_FALSE(menuAction(0, "Undo")->isEnabled());
}

} // namespace
} // namespace lumora
