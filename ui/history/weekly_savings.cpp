// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/weekly_savings.h"

namespace lumora {
namespace {

constexpr qint64 daysOfAWeek = 7;

QDate mondayOf(QDate day)
{
    return day.addDays(1 - day.dayOfWeek());
}

} // namespace

std::vector<WeekSaving> weeklySavings(const std::vector<DatedBatch>& batches, QDate today, int weeks)
{
    const QDate first = mondayOf(today).addDays(daysOfAWeek * (1 - weeks));
    std::vector<WeekSaving> savings;
    savings.reserve(static_cast<std::size_t>(weeks));
    for (int week = 0; week < weeks; ++week)
        savings.push_back({first.addDays(daysOfAWeek * week), 0});
    for (const DatedBatch& batch : batches) {
        const qint64 week = first.daysTo(mondayOf(batch.day)) / daysOfAWeek;
        // The clock of a machine may once have been ahead.
        if (batch.day >= first && week < weeks)
            savings[static_cast<std::size_t>(week)].saved += batch.summary.saved;
    }
    return savings;
}

} // namespace lumora
