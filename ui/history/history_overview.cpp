// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_overview.h"

#include "history/history.h"

#include <utility>

namespace lumora {

std::shared_ptr<const HistoryOverview> readOverview(History& history, QDate today)
{
    auto batches = history.batches();
    if (!batches) return nullptr;
    auto overview = std::make_shared<HistoryOverview>();
    overview->batches = datedBatches(std::move(*batches));
    overview->weeks = weeklySavings(overview->batches, today);
    for (const DatedBatch& batch : overview->batches) {
        overview->files += batch.summary.files;
        overview->saved += batch.summary.saved;
    }
    overview->trouble = history.trouble();
    return overview;
}

} // namespace lumora
