// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/batch_rows.h"

#include "ui/history/history_words.h"
#include "ui/history/weekly_savings.h"

#include <QDateTime>

#include <gtest/gtest.h>

namespace lumora {
namespace {

const QDate today(2026, 11, 18); // a Wednesday

BatchSummary batch(std::int64_t id, QDate day, int hour, std::int64_t files = 1, std::int64_t saved = 10)
{
    BatchSummary summary;
    summary.files = summary.written = files;
    summary.saved = saved;
    summary.batch.id = id;
    summary.batch.time = QDateTime(day, QTime(hour, 30)).toSecsSinceEpoch();
    return summary;
}

TEST(BatchRows, StandNewestFirstUnderTheirDaysWithTheSumsOfThose)
{
    // The second one was numbered before the first, which began earlier.
    const auto batches =
        datedBatches({batch(4, today, 9, 5, 50), batch(3, today, 11, 2, -20),
                      batch(2, today.addDays(-1), 23, 1, 7), batch(1, today.addDays(-9), 0)});
    const auto rows = batchRows(batches, HistoryFilter::all);
    ASSERT_EQ(rows.size(), 7u);
    EXPECT_FALSE(rows[0].batch);
    EXPECT_EQ(rows[0].day, today);
    EXPECT_EQ(rows[0].files, 7);
    EXPECT_EQ(rows[0].saved, 30);
    EXPECT_EQ(batches[rows[1].batch.value()].summary.batch.id, 3);
    EXPECT_EQ(batches[rows[2].batch.value()].summary.batch.id, 4);
    EXPECT_EQ(rows[3].day, today.addDays(-1));
    EXPECT_FALSE(rows[3].batch);
    EXPECT_EQ(rows[6].files, 1);
}

TEST(BatchRows, AreThoseWithAFileThatTheFilterLetsPass)
{
    BatchSummary failed = batch(3, today, 9, 4);
    failed.written = 2;
    BatchSummary undone = batch(2, today.addDays(-1), 9, 4);
    undone.undone = 1;
    BatchSummary nothing = batch(1, today.addDays(-2), 9, 4);
    nothing.written = 0;
    const auto batches = datedBatches({failed, undone, nothing});
    const auto listed = [&](HistoryFilter filter) {
        std::vector<std::int64_t> ids;
        for (const BatchRow& row : batchRows(batches, filter)) {
            if (row.batch) ids.push_back(batches[*row.batch].summary.batch.id);
        }
        return ids;
    };
    EXPECT_EQ(listed(HistoryFilter::all), (std::vector<std::int64_t>{3, 2, 1}));
    EXPECT_EQ(listed(HistoryFilter::written), (std::vector<std::int64_t>{3, 2}));
    EXPECT_EQ(listed(HistoryFilter::notWritten), (std::vector<std::int64_t>{3, 1}));
    EXPECT_EQ(listed(HistoryFilter::undone), (std::vector<std::int64_t>{2}));
}

TEST(WeeklySavings, AddUpWhatWasSavedFromMondayToSunday)
{
    const QDate monday(2026, 11, 16);
    const auto weeks = weeklySavings(
        datedBatches({batch(6, today.addDays(30), 9, 1, 1000), batch(5, today, 9, 1, 5),
                      batch(4, monday, 0, 1, 3), batch(3, monday.addDays(-1), 23, 1, -2),
                      batch(2, monday.addDays(-14), 0, 1, 4), batch(1, monday.addDays(-15), 23, 1, 1000)}),
        today, 3);
    EXPECT_EQ(weeks,
              (std::vector<WeekSaving>{{monday.addDays(-14), 4}, {monday.addDays(-7), -2}, {monday, 8}}));
}

TEST(HistoryWords, NameDaysAsPeopleDo)
{
    EXPECT_EQ(dayText(today, today), QStringLiteral("Today"));
    EXPECT_EQ(dayText(today.addDays(-1), today), QStringLiteral("Yesterday"));
    EXPECT_EQ(dayText(QDate(2026, 11, 3), today), QStringLiteral("Tue, 3 November 2026"));
    EXPECT_EQ(savedText(1'500'000), QStringLiteral("saved 1.5 MB"));
    EXPECT_EQ(savedText(-2'000), QStringLiteral("larger by 2 KB"));
    EXPECT_EQ(savedText(0), QStringLiteral("nothing saved"));
    EXPECT_EQ(filesText(1), QStringLiteral("1 file"));
}

} // namespace
} // namespace lumora
