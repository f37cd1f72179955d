// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results_list.h"

#include "tests/ui/drop_window_objects.h"
#include "ui/fonts.h"
#include "ui/results_list_model.h"
#include "ui/results_list_view.h"
#include "ui/results_summary.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLocale>
#include <QMenu>
#include <QMimeData>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

#include <gmock/gmock.h>

namespace lumora {
namespace {

using std::filesystem::path;

class Results : public testing::Test
{
protected:
    Results() : list(new ResultsList(objects.model, browser(), &window))
    {
        auto* stack = new QVBoxLayout(&window);
        stack->setContentsMargins(0, 0, 0, 0);
        stack->addWidget(list);
        stack->addStretch();
        window.resize(676, 700);
        window.show();
    }

    FileBrowser browser()
    {
        return {[this](const path& file) { objects.shown.push_back(file); },
                [this](const path& file) { objects.opened.push_back(file); }};
    }
    void addSuccesses(int count)
    {
        for (int i = 0; i < count; ++i)
            objects.addSuccess("/photos/" + std::to_string(i) + ".jpg", 2000, 1000, "Optimized");
        QCoreApplication::processEvents();
    }
    ResultsListView& view() { return *list->findChild<ResultsListView*>(); }
    QModelIndex row(int number) { return view().model()->index(number, 0); }
    QVariant at(int number, int role) { return row(number).data(role); }
    QStringList summary()
    {
        QStringList texts;
        for (const SummaryMetric* metric : list->findChildren<SummaryMetric*>())
            texts << metric->title() + u'=' + metric->value();
        return texts;
    }
    QAction* menuAction(int number, const char* text)
    {
        for (QAction* action : view().makeContextMenu(row(number))->actions()) {
            if (action->text() == QLatin1String(text)) return action;
        }
        return nullptr;
    }

    test::DropWindowObjects objects;
    QWidget window;
    ResultsList* list;
};

TEST_F(Results, ShowNothingWhileThereAreNone)
{
    EXPECT_TRUE(list->isHidden());
}

TEST_F(Results, TakeFiftyEightARowUpToEightRowsAndScrollBeyond)
{
    addSuccesses(1);
    EXPECT_FALSE(list->isHidden());
    EXPECT_EQ(view().height(), 58);
    EXPECT_EQ(view().verticalScrollBar()->maximum(), 0);
    addSuccesses(7);
    EXPECT_EQ(view().height(), 464);
    addSuccesses(4);
    EXPECT_EQ(view().height(), 464);
    EXPECT_EQ(view().verticalScrollBar()->maximum(), 4 * 58);
}

TEST_F(Results, StandTenBelowTheirTotals)
{
    addSuccesses(2);
    const auto* totals = list->findChild<ResultsSummary*>();
    EXPECT_EQ(view().y() - totals->geometry().bottom() - 1, 10);
    EXPECT_EQ(totals->layout()->contentsMargins(), QMargins(12, 9, 12, 9));
    EXPECT_EQ(totals->layout()->spacing(), 14);
}

TEST_F(Results, AreRowsOfRawValuesNewestFirst)
{
    objects.addSuccess("/photos/a.jpg", 2'000'000, 1'500'000, "Optimized");
    objects.addFailure("/photos/b.jpg", "The image could not be read.");
    const QAbstractItemModelTester tester(view().model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(at(0, Qt::DisplayRole), QStringLiteral("b.jpg"));
    EXPECT_EQ(at(0, ResultsListModel::IsSuccessRole), false);
    EXPECT_EQ(at(0, ResultsListModel::HasOutputRole), false);
    EXPECT_EQ(at(0, ResultsListModel::MessageRole), QStringLiteral("The image could not be read."));
    EXPECT_EQ(at(1, ResultsListModel::OriginalBytesRole), 2'000'000);
    EXPECT_EQ(at(1, ResultsListModel::OutputBytesRole), 1'500'000);
    EXPECT_EQ(at(1, ResultsListModel::MetricsTextRole),
              QStringLiteral("2 MB -> 1.5 MB | saved 500 KB (25.0%)"));
}

TEST_F(Results, TellAScreenReaderWhatTheIconShows)
{
    objects.addSuccess("/photos/a.jpg", 2'000'000, 2'000'000, "Converted");
    objects.addFailure("/photos/b.jpg", "The image could not be read.");
    EXPECT_EQ(at(0, Qt::AccessibleTextRole), QStringLiteral("b.jpg"));
    EXPECT_EQ(at(0, Qt::AccessibleDescriptionRole), QStringLiteral("Failed: The image could not be read."));
    EXPECT_EQ(at(1, Qt::AccessibleDescriptionRole),
              QStringLiteral("Succeeded: Converted, 2 MB -> 2 MB | no size change"));
}

TEST_F(Results, KeepTotalsThatEqualTheRecomputedOnes)
{
    for (int i = 0; i < 20; ++i) {
        if (i % 3 == 0)
            objects.addFailure("/photos/f.jpg", "no");
        else
            objects.addSuccess("/photos/s.jpg", 1000 * i, 700 * i + 90, "Optimized");
    }
    ResultTotals recomputed;
    for (int i = 0; i < objects.model.resultCount(); ++i)
        recomputed.add(objects.model.resultAt(i));
    const ResultTotals& kept = list->findChild<ResultsSummary*>()->totals();
    EXPECT_EQ(kept.files, recomputed.files);
    EXPECT_EQ(kept.succeeded, recomputed.succeeded);
    EXPECT_EQ(kept.originalBytes, recomputed.originalBytes);
    EXPECT_EQ(kept.outputBytes, recomputed.outputBytes);
}

TEST_F(Results, NameGrowthInTheTotals)
{
    objects.addSuccess("/photos/s.jpg", 1'000'000, 1'250'000, "Converted");
    EXPECT_EQ(summary(), (QStringList{QStringLiteral("Files=1/1"), QStringLiteral("Total Larger=250 KB"),
                                      QStringLiteral("Reduction=+25.0%")}));
}

TEST_F(Results, DescribeTheirSizesInTheWordsOfTheirChange)
{
    struct Case
    {
        std::int64_t before, after;
        const char* text;
    };
    const Case cases[] = {{0, 1000, "Zero KB -> 1 KB"},
                          {0, 0, "Zero KB -> Zero KB"},
                          {1'000'000, 1'000'000, "1 MB -> 1 MB | no size change"},
                          {1'000'000, 1'250'000, "1 MB -> 1.3 MB | larger by 250 KB (25.0%)"},
                          {3'000'000, 1'000'000, "3 MB -> 1 MB | saved 2 MB (66.7%)"}};
    for (const Case& sizes : cases) {
        objects.addSuccess("/photos/a.jpg", sizes.before, sizes.after, "Optimized");
        EXPECT_EQ(at(0, ResultsListModel::MetricsTextRole), QString::fromLatin1(sizes.text));
    }
}

TEST_F(Results, WriteFiguresInTheFormOfTheLocale)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    objects.addSuccess("/photos/a.jpg", 1'500'000, 500'000, "Optimized");
    EXPECT_EQ(at(0, ResultsListModel::MetricsTextRole),
              QStringLiteral("1,5 MB -> 500 KB | saved 1 MB (66,7%)"));
    EXPECT_EQ(summary().last(), QStringLiteral("Reduction=66,7%"));
    QLocale::setDefault(QLocale::c());
}

TEST_F(Results, CountFailuresAsFilesAndInNoByteTotal)
{
    objects.addSuccess("/photos/s.jpg", 1'000'000, 750'000, "Optimized");
    objects.addFailure("/photos/f.jpg", "no");
    objects.add({"/photos/g.jpg", std::nullopt, 5'000'000, 1, "no", false});
    EXPECT_EQ(summary(), (QStringList{QStringLiteral("Files=1/3"), QStringLiteral("Total Saved=250 KB"),
                                      QStringLiteral("Reduction=25.0%")}));
}

TEST_F(Results, NameTheShowButtonUnderThePointer)
{
    addSuccesses(1);
    const QPoint place = view().revealButton(row(0)).center();
    QHelpEvent help(QEvent::ToolTip, place, view().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(view().viewport(), &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Show in Finder"));
    QToolTip::hideText();
}

TEST_F(Results, OpenTheMenuOfTheRowUnderThePointerOrOfTheCurrentOne)
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

TEST_F(Results, OpenNoMenuBelowTheLastRow)
{
    addSuccesses(1);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 600), QPoint(20, 600));
    QCoreApplication::sendEvent(view().viewport(), &event);
    EXPECT_EQ(view().findChild<QMenu*>(), nullptr);
}

TEST_F(Results, CopyThePathOfTheCurrentRowByKeys)
{
    addSuccesses(1);
    view().setCurrentIndex(row(0));
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/photos/0.webp"));
}

TEST_F(Results, GrowWithTheDesktopsTextScaleWhileTheyShow)
{
    addSuccesses(3);
    fonts::install(*qApp, 2);
    EXPECT_TRUE(test::waitFor([this] { return view().height() == 3 * 116; }));
    EXPECT_EQ(view().visualRect(row(1)).height(), 116);
    fonts::install(*qApp, 1);
    EXPECT_TRUE(test::waitFor([this] { return view().height() == 3 * 58; }));
}

TEST_F(Results, OfFailuresAloneReduceByZeroPercent)
{
    objects.addFailure("/photos/f.jpg", "no");
    EXPECT_EQ(summary(), (QStringList{QStringLiteral("Files=0/1"), QStringLiteral("Total Saved=Zero KB"),
                                      QStringLiteral("Reduction=0%")}));
}

TEST_F(Results, HaveAShowButtonOnlyWhereThereIsAnOutput)
{
    objects.addSuccess("/photos/a.jpg", 2, 1, "Optimized");
    objects.addFailure("/photos/b.jpg", "no");
    QCoreApplication::processEvents();
    EXPECT_TRUE(view().revealButton(row(0)).isEmpty());
    EXPECT_TRUE(view().viewport()->rect().contains(view().revealButton(row(1))));
}

TEST_F(Results, ShowTheOutputByMouse)
{
    addSuccesses(2);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, view().revealButton(row(1)).center());
    EXPECT_THAT(objects.shown, testing::ElementsAre(path("/photos/0.webp")));
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, view().visualRect(row(0)).center());
    EXPECT_EQ(objects.shown.size(), 1U);
}

TEST_F(Results, ShowNothingWhenTheButtonIsLeftBeforeTheRelease)
{
    addSuccesses(1);
    QTest::mousePress(view().viewport(), Qt::LeftButton, {}, view().revealButton(row(0)).center());
    QTest::mouseRelease(view().viewport(), Qt::LeftButton, {}, QPoint(200, 20));
    EXPECT_TRUE(objects.shown.empty());
}

TEST_F(Results, ShowTheOutputByReturn)
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

TEST_F(Results, AreWalkedByKeysThroughPagesAndEnds)
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

TEST_F(Results, OfferShowOpenAndCopyInAMenu)
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

TEST_F(Results, OfferNoOutputOfAFailedFile)
{
    objects.addFailure("/photos/f.jpg", "no");
    EXPECT_FALSE(menuAction(0, "Show in Finder")->isEnabled());
    EXPECT_FALSE(menuAction(0, "Open")->isEnabled());
    menuAction(0, "Copy Path")->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("/photos/f.jpg"));
}

TEST_F(Results, CarryTheirOutputOutAsAFileByTheBytesOfItsName)
{
    objects.addSuccess("/photos/b\xFF.jpg", 2, 1, "Optimized");
    objects.addFailure("/photos/f.jpg", "no");
    EXPECT_FALSE(row(0).flags().testFlag(Qt::ItemIsDragEnabled));
    EXPECT_TRUE(row(1).flags().testFlag(Qt::ItemIsDragEnabled));
    const std::unique_ptr<QMimeData> data(view().model()->mimeData({row(1)}));
    EXPECT_EQ(data->data(QStringLiteral("text/uri-list")), "file:///photos/b%FF.webp\r\n");
}

TEST_F(Results, TellFullPathsAndWholeMessagesInATipWithoutReadingMarkup)
{
    objects.addFailure("/photos/<b>x</b>.jpg", "line one\nline two");
    const QString tip = at(0, Qt::ToolTipRole).toString();
    EXPECT_TRUE(tip.contains(QStringLiteral("/photos/&lt;b&gt;x&lt;/b&gt;.jpg")));
    EXPECT_TRUE(tip.contains(QStringLiteral("line one\nline two")));
}

TEST_F(Results, StayInPlaceWhileNewerOnesArriveAboveThem)
{
    addSuccesses(20);
    view().verticalScrollBar()->setValue(5 * 58 + 7);
    const QModelIndex seen = view().indexAt(QPoint(5, 5));
    const QPersistentModelIndex same(seen);
    const int top = view().visualRect(seen).top();
    addSuccesses(1);
    EXPECT_EQ(view().visualRect(same).top(), top);
}

TEST_F(Results, ShowTheNewestWhileTheListIsAtItsTop)
{
    addSuccesses(20);
    addSuccesses(1);
    EXPECT_EQ(view().verticalScrollBar()->value(), 0);
    EXPECT_EQ(view().indexAt(QPoint(5, 5)).row(), 0);
}

TEST_F(Results, HaveTheButtonAtTheTrailingEdgeInEitherDirection)
{
    addSuccesses(1);
    EXPECT_EQ(view().viewport()->width() - view().revealButton(row(0)).right() - 1, 10);
    window.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(view().revealButton(row(0)).left(), 10);
}

} // namespace
} // namespace lumora
