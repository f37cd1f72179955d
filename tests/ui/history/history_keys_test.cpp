// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/history/history_test.h"

#include <QSignalSpy>

namespace lumora {
namespace {

using test::HistoryViewTest;

class HistoryKeys : public HistoryViewTest
{
protected:
    void SetUp() override
    {
        add({written("/in/old.jpg")}, 9);
        add({written("/in/a.jpg"), written("/in/b.jpg")});
        open();
    }
};

TEST_F(HistoryKeys, GoFromBatchToBatchOverTheDays)
{
    EXPECT_EQ(view->focusWidget(), view.get());
    press(Qt::Key_Down);
    EXPECT_EQ(view->focusWidget(), &batchList());
    EXPECT_EQ(batchList().currentIndex().row(), 1);
    press(Qt::Key_Down);
    EXPECT_EQ(batchList().currentIndex().row(), 3);
    press(Qt::Key_Down);
    EXPECT_EQ(batchList().currentIndex().row(), 3);
    press(Qt::Key_Up);
    EXPECT_EQ(batchList().currentIndex().row(), 1);
    press(Qt::Key_Up);
    EXPECT_EQ(batchList().currentIndex().row(), 1);
    press(Qt::Key_End);
    EXPECT_EQ(batchList().currentIndex().row(), 3);
    press(Qt::Key_Home);
    EXPECT_EQ(batchList().currentIndex().row(), 1);
}

TEST_F(HistoryKeys, GoFromTheBatchesToTheirFiles)
{
    batchList().setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(view->focusWidget(), &fileList());
    press(Qt::Key_Down);
    EXPECT_EQ(fileList().currentIndex().row(), 1);
}

TEST_F(HistoryKeys, ChooseTheFileThatTheyLeadTo)
{
    batchList().setFocus();
    press(Qt::Key_Return);
    EXPECT_TRUE(chip("Show in Folder")->isEnabled());
    press(Qt::Key_U, Qt::ControlModifier);
    ASSERT_TRUE(test::waitFor([&] { return !undoneFiles.empty(); }));
    EXPECT_EQ(undoneFiles.front().source, "/in/a.jpg");
}

TEST_F(HistoryKeys, SearchAndLeaveTheSearchAndThenTheWindow)
{
    QSignalSpy closing(view.get(), &HistoryView::closeRequested);
    QTest::keyClick(view.get(), Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(view->focusWidget(), &field());
    QTest::keyClicks(&field(), QStringLiteral("b.j"));
    ASSERT_TRUE(settle());
    EXPECT_EQ(names(), QStringList("b.jpg"));
    press(Qt::Key_Down);
    EXPECT_EQ(view->focusWidget(), &fileList());
    press(Qt::Key_Escape);
    ASSERT_TRUE(settle());
    EXPECT_TRUE(field().text().isEmpty());
    EXPECT_EQ(names().size(), 2);
    EXPECT_EQ(closing.count(), 0);
    press(Qt::Key_Escape);
    EXPECT_EQ(closing.count(), 1);
    field().setFocus();
    press(Qt::Key_Escape);
    EXPECT_EQ(closing.count(), 2);
}

TEST_F(HistoryKeys, SearchForWhatIsTypedInAList)
{
    batchList().setFocus();
    press(Qt::Key_O);
    EXPECT_EQ(view->focusWidget(), &field());
    EXPECT_EQ(field().text(), QStringLiteral("o"));
    press(Qt::Key_L);
    EXPECT_EQ(field().text(), QStringLiteral("ol"));
}

} // namespace
} // namespace lumora
