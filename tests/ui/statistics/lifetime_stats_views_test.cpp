// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/model_objects.h"
#include "ui/controls/styled_label.h"
#include "ui/statistics/lifetime_stats_grid.h"
#include "ui/statistics/lifetime_stats_strip.h"

#include <QCoreApplication>
#include <QLayout>
#include <QLocale>

#include <gtest/gtest.h>

namespace lumora {
namespace {

QStringList shownTexts(const QWidget& view)
{
    QStringList texts;
    for (const QLabel* label : view.findChildren<QLabel*>()) {
        if (!label->isHidden()) texts << label->text();
    }
    return texts;
}

QStringList list(std::initializer_list<const char*> texts)
{
    QStringList result;
    for (const char* text : texts)
        result << QString::fromUtf8(text);
    return result;
}

TEST(LifetimeStatsStrip, FreshStatisticsShowZeroAndNoBest)
{
    test::ModelObjects objects;
    LifetimeStatsStrip strip(objects.stats);
    EXPECT_EQ(shownTexts(strip), list({"0 lifetime files", "Net saved Zero KB"}));
}

TEST(LifetimeStatsStrip, FollowsTheStoreAndCountsSuccessfulFilesOnly)
{
    test::ModelObjects objects;
    LifetimeStatsStrip strip(objects.stats);
    objects.record(3'000'000, 1'500'000);
    objects.record(0, 0, false);
    EXPECT_EQ(shownTexts(strip), list({"1 lifetime files", "Net saved 1.5 MB", "Best 1.5 MB"}));
    objects.stats.reset();
    EXPECT_EQ(shownTexts(strip), list({"0 lifetime files", "Net saved Zero KB"}));
}

TEST(LifetimeStatsStrip, NegativeNetHasALeadingMinusAndNoBest)
{
    test::ModelObjects objects;
    objects.record(1'000, 501'000);
    LifetimeStatsStrip strip(objects.stats);
    EXPECT_EQ(shownTexts(strip), list({"1 lifetime files", "Net saved -500 KB"}));
}

TEST(LifetimeStatsStrip, IsPaddedTwelveByEightWithTenBetween)
{
    test::ModelObjects objects;
    LifetimeStatsStrip strip(objects.stats);
    EXPECT_EQ(strip.layout()->contentsMargins(), QMargins(12, 8, 12, 8));
    EXPECT_EQ(strip.layout()->spacing(), 10);
}

TEST(LifetimeStatsGrid, ShowsSixFiguresInReadingOrder)
{
    test::ModelObjects objects;
    LifetimeStatsGrid grid(objects.stats);
    objects.record(2'000'000, 500'000);
    objects.record(1'000, 2'001'000);
    objects.record(0, 0, false);
    EXPECT_EQ(shownTexts(grid),
              list({"Files", "2/3", "Gross Saved", "1.5 MB", "Net Saved", "-500 KB", "Original Data", "2 MB",
                    "Output Data", "2.5 MB", "Largest Save", "1.5 MB"}));
}

TEST(LifetimeStatsGrid, UsesTheDecimalPointOfTheLocale)
{
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
    test::ModelObjects objects;
    objects.record(2'500'000, 1'000'000);
    LifetimeStatsGrid grid(objects.stats);
    EXPECT_TRUE(shownTexts(grid).contains(QStringLiteral("1,5 MB")));
    QLocale::setDefault(QLocale::c());
}

TEST(LifetimeStatsGrid, HasThreeEqualColumnsOfAtLeast120)
{
    test::ModelObjects objects;
    LifetimeStatsGrid grid(objects.stats);
    grid.resize(560, grid.sizeHint().height());
    grid.show();
    QCoreApplication::processEvents();
    const QList<LightMetric*> cells = grid.findChildren<LightMetric*>();
    ASSERT_EQ(cells.size(), 6);
    EXPECT_EQ(cells[0]->x(), 0);
    EXPECT_NEAR(cells[1]->x() - cells[0]->x(), cells[2]->x() - cells[1]->x(), 1);
    EXPECT_GE(cells[0]->width(), 120);
    EXPECT_EQ(cells[3]->y() - (cells[0]->y() + cells[0]->height()), 10);
    EXPECT_EQ(cells[3]->x(), 0);
}

} // namespace
} // namespace lumora
