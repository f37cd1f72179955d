// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The batches of a history as they are listed: newest first, under their days. Values.
#pragma once

#include "history/history_records.h"

#include <QDate>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace lumora {

struct DatedBatch
{
    BatchSummary summary;
    QDate day;
};

// Sorts them too: one that began earlier may have been numbered later.
std::vector<DatedBatch> datedBatches(std::vector<BatchSummary> batches);

struct BatchRow
{
    QDate day;
    std::optional<std::size_t> batch = {}; // its place among the batches; absent: the row of a day
    // Of the day, or of the batch.
    std::int64_t files = 0;
    std::int64_t saved = 0;
};

// Of the batches with a file that the filter lets pass.
std::vector<BatchRow> batchRows(const std::vector<DatedBatch>& batches, HistoryFilter filter);

} // namespace lumora
