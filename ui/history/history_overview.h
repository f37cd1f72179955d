// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// All that is shown of a history at once: its batches and what they saved. A value.
#pragma once

#include "ui/history/weekly_savings.h"

#include <QDate>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace lumora {

class History;

struct HistoryOverview
{
    std::vector<DatedBatch> batches; // newest first
    std::vector<WeekSaving> weeks;
    std::int64_t files = 0;
    std::int64_t saved = 0;
    std::string trouble; // what went wrong with the history itself; empty when nothing did
};

// Null when the history cannot be read. Not on the main thread: it takes its time.
std::shared_ptr<const HistoryOverview> readOverview(History& history, QDate today);

} // namespace lumora
