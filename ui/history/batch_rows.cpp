// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/batch_rows.h"

#include "ui/history/history_words.h"

#include <algorithm>
#include <utility>

namespace lumora {
namespace {

bool passes(const BatchSummary& summary, HistoryFilter filter)
{
    switch (filter) {
    case HistoryFilter::written:
        return summary.written > 0;
    case HistoryFilter::notWritten:
        return summary.written < summary.files;
    case HistoryFilter::undone:
        return summary.undone > 0;
    case HistoryFilter::all:
        break;
    }
    return true;
}

} // namespace

std::vector<DatedBatch> datedBatches(std::vector<BatchSummary> batches)
{
    std::ranges::stable_sort(batches, [](const BatchSummary& left, const BatchSummary& right) {
        return left.batch.time > right.batch.time;
    });
    std::vector<DatedBatch> dated;
    dated.reserve(batches.size());
    for (BatchSummary& summary : batches) {
        const QDate day = dayOf(summary.batch.time);
        dated.push_back({std::move(summary), day});
    }
    return dated;
}

std::vector<BatchRow> batchRows(const std::vector<DatedBatch>& batches, HistoryFilter filter)
{
    std::vector<BatchRow> rows;
    rows.reserve(batches.size());
    std::size_t dayRow = 0;
    for (std::size_t place = 0; place < batches.size(); ++place) {
        const auto& [summary, day] = batches[place];
        if (!passes(summary, filter)) continue;
        if (rows.empty() || rows[dayRow].day != day) {
            dayRow = rows.size();
            rows.push_back({.day = day});
        }
        rows[dayRow].files += summary.files;
        rows[dayRow].saved += summary.saved;
        rows.push_back({.day = day, .batch = place, .files = summary.files, .saved = summary.saved});
    }
    return rows;
}

} // namespace lumora
