// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_list.h"

#include "tests/ui/results/results_window.h"
#include "ui/results/results_list_model.h"
#include "ui/theme/fonts.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QLocale>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace lumora {
namespace {

class Results : public testing::Test, protected test::ResultsWindow
{
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
    const ProcessingResult& success = static_cast<ResultsListModel*>(view().model())->result(row(1));
    EXPECT_EQ(success.originalBytes, 2'000'000);
    EXPECT_EQ(success.outputBytes, 1'500'000);
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
    const QLocale locale;
    EXPECT_EQ(summary(), (QStringList{QStringLiteral("Files=") + recomputed.filesText(),
                                      recomputed.differenceTitle() + u'=' + recomputed.differenceText(locale),
                                      QStringLiteral("Reduction=") + recomputed.percentageText(locale)}));
    EXPECT_EQ(summary().first(), QStringLiteral("Files=13/20"));
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

} // namespace
} // namespace lumora
