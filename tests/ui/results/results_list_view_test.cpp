// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What can be done with a row.
#include "ui/results/results_list_view.h"

#include "tests/ui/results/results_window.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <gmock/gmock.h>

namespace lumora {
namespace {

using std::filesystem::path;

class ResultRows : public testing::Test, protected test::ResultsWindow
{
};

TEST_F(ResultRows, NameTheShowButtonUnderThePointer)
{
    addSuccesses(1);
    const QPoint place = view().revealButton(row(0)).center();
    QHelpEvent help(QEvent::ToolTip, place, view().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(view().viewport(), &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Show in Finder"));
    QToolTip::hideText();
}

TEST_F(ResultRows, OpenTheMenuOfTheRowUnderThePointerOrOfTheCurrentOne)
{
    addSuccesses(2);
    view().setCurrentIndex(row(0));
    const std::pair<QContextMenuEvent::Reason, const char*> roads[] = {
        {QContextMenuEvent::Mouse, "/photos/0.webp"}, {QContextMenuEvent::Keyboard, "/photos/1.webp"}};
    for (const auto& [reason, file] : roads) {
        const QPoint place = view().visualRect(row(1)).center();
        QContextMenuEvent event(reason, place, place);
        QCoreApplication::sendEvent(view().viewport(), &event);
        QPointer<QMenu> menu = view().findChild<QMenu*>();
        ASSERT_TRUE(menu && menu->isVisible());
        menu->actions().first()->trigger();
        EXPECT_EQ(objects.shown.back(), path(file));
        menu->close();
        test::waitFor([&] { return !menu; });
    }
}

TEST_F(ResultRows, OpenTheMenuOfTheFirstRowInSightByKeyBeforeOneIsChosen)
{
    addSuccesses(2);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QCoreApplication::sendEvent(view().viewport(), &event);
    auto* menu = view().findChild<QMenu*>();
    ASSERT_TRUE(menu && menu->isVisible());
    menu->actions().first()->trigger();
    EXPECT_EQ(objects.shown.back(), path("/photos/1.webp"));
    menu->close();
}

TEST_F(ResultRows, HaveTheShowButtonOnTheirAxis)
{
    addSuccesses(1);
    const QRect place = view().visualRect(row(0));
    const QRect button = view().revealButton(row(0));
    EXPECT_EQ(button.top() - place.top(), place.bottom() - button.bottom());
}

TEST_F(ResultRows, OpenNoMenuBelowTheLastRow)
{
    addSuccesses(1);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 600), QPoint(20, 600));
    QCoreApplication::sendEvent(view().viewport(), &event);
    EXPECT_EQ(view().findChild<QMenu*>(), nullptr);
}

TEST_F(ResultRows, CopyThePathOfTheCurrentRowByKeys)
{
    addSuccesses(1);
    view().setCurrentIndex(row(0));
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/photos/0.webp"));
}

TEST_F(ResultRows, HaveAShowButtonOnlyWhereThereIsAnOutput)
{
    objects.addSuccess("/photos/a.jpg", 2, 1, "Optimized");
    objects.addFailure("/photos/b.jpg", "no");
    QCoreApplication::processEvents();
    EXPECT_TRUE(view().revealButton(row(0)).isEmpty());
    EXPECT_TRUE(view().viewport()->rect().contains(view().revealButton(row(1))));
}

TEST_F(ResultRows, ShowTheOutputByMouse)
{
    addSuccesses(2);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, view().revealButton(row(1)).center());
    EXPECT_THAT(objects.shown, testing::ElementsAre(path("/photos/0.webp")));
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, view().visualRect(row(0)).center());
    EXPECT_EQ(objects.shown.size(), 1U);
}

TEST_F(ResultRows, ShowNothingWhenTheButtonIsLeftBeforeTheRelease)
{
    addSuccesses(1);
    QTest::mousePress(view().viewport(), Qt::LeftButton, {}, view().revealButton(row(0)).center());
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, QPoint(200, 20));
    EXPECT_TRUE(objects.shown.empty());
}

TEST_F(ResultRows, ShowTheOutputByReturn)
{
    addSuccesses(3);
    objects.addFailure("/photos/f.jpg", "no");
    view().setCurrentIndex(row(0));
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_TRUE(objects.shown.empty());
    QTest::keyClick(&view(), Qt::Key_Down);
    QTest::keyClick(&view(), Qt::Key_Return);
    EXPECT_THAT(objects.shown, testing::ElementsAre(path("/photos/2.webp")));
}

TEST_F(ResultRows, AreWalkedByKeysThroughPagesAndEnds)
{
    addSuccesses(30);
    view().setCurrentIndex(row(0));
    const std::pair<Qt::Key, int> steps[] = {{Qt::Key_PageDown, 8}, {Qt::Key_End, 29}, {Qt::Key_Down, 29},
                                             {Qt::Key_PageUp, 21},  {Qt::Key_Up, 20},  {Qt::Key_Home, 0}};
    for (const auto& [key, expected] : steps) {
        QTest::keyClick(&view(), key);
        EXPECT_EQ(view().currentIndex().row(), expected);
        EXPECT_TRUE(view().viewport()->rect().contains(view().visualRect(view().currentIndex())));
    }
}

TEST_F(ResultRows, OfferShowOpenAndCopyInAMenu)
{
    objects.addSuccess("/photos/a b.jpg", 2, 1, "Optimized");
    menuAction(0, "Show in Finder")->trigger();
    menuAction(0, "Open")->trigger();
    EXPECT_THAT(objects.shown, testing::ElementsAre(path("/photos/a b.webp")));
    EXPECT_THAT(objects.opened, testing::ElementsAre(path("/photos/a b.webp")));
    menuAction(0, "Copy Path")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/photos/a b.webp"));
    menuAction(0, "Copy Message")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Optimized"));
}

TEST_F(ResultRows, OfferNoOutputOfAFailedFile)
{
    objects.addFailure("/photos/f.jpg", "no");
    EXPECT_FALSE(menuAction(0, "Show in Finder")->isEnabled());
    EXPECT_FALSE(menuAction(0, "Open")->isEnabled());
    menuAction(0, "Copy Path")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/photos/f.jpg"));
}

TEST_F(ResultRows, AreComparedByDoubleClickByKeyAndByMenu)
{
    addSuccesses(2);
    objects.addFailure("/photos/f.jpg", "no");
    QSignalSpy asked(list, &ResultsList::compareRequested);
    const QPoint place = view().visualRect(row(1)).center();
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(asked.count(), 0);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, place);
    QTest::keyClick(&view(), Qt::Key_Space);
    menuAction(1, "Compare")->trigger();
    ASSERT_EQ(asked.count(), 3);
    for (const QVariantList& call : asked)
        EXPECT_EQ(call.at(1).toModelIndex().row(), 1);
    EXPECT_TRUE(objects.shown.empty());
}

TEST_F(ResultRows, AreNotComparedWithoutAnOutputOrByTheShowButton)
{
    addSuccesses(1);
    objects.addFailure("/photos/f.jpg", "no");
    QSignalSpy asked(list, &ResultsList::compareRequested);
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, view().visualRect(row(0)).center());
    QTest::keyClick(&view(), Qt::Key_Space);
    EXPECT_FALSE(menuAction(0, "Compare")->isEnabled());
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, view().revealButton(row(1)).center());
    EXPECT_EQ(asked.count(), 0);
}

TEST_F(ResultRows, CarryTheirOutputOutAsAFileByTheBytesOfItsName)
{
    objects.addSuccess("/photos/b\xFF.jpg", 2, 1, "Optimized");
    objects.addFailure("/photos/f.jpg", "no");
    EXPECT_FALSE(row(0).flags().testFlag(Qt::ItemIsDragEnabled));
    EXPECT_TRUE(row(1).flags().testFlag(Qt::ItemIsDragEnabled));
    const std::unique_ptr<QMimeData> data(view().model()->mimeData({row(1)}));
    EXPECT_EQ(data->data(QStringLiteral("text/uri-list")), "file:///photos/b%FF.webp\r\n");
}

TEST_F(ResultRows, TellFullPathsAndWholeMessagesInATipWithoutReadingMarkup)
{
    objects.addFailure("/photos/<b>x</b>.jpg", "line one\nline two");
    const QString tip = at(0, Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(QStringLiteral("/photos/&lt;b&gt;x&lt;/b&gt;.jpg")));
    EXPECT_TRUE(tip.contains(QStringLiteral("line one\nline two")));
}

TEST_F(ResultRows, HaveTheButtonAtTheTrailingEdgeInEitherDirection)
{
    addSuccesses(1);
    EXPECT_EQ(view().viewport()->width() - view().revealButton(row(0)).right() - 1, 10);
    window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(view().revealButton(row(0)).left(), 10);
}

} // namespace
} // namespace lumora
