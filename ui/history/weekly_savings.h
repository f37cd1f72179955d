// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What was saved in each of the last weeks. Values.
#pragma once

#include "ui/history/batch_rows.h"

#include <QDate>

#include <cstdint>
#include <vector>

namespace lumora {

struct WeekSaving
{
    QDate monday;
    std::int64_t saved = 0; // bytes; below 0 where outputs were larger

    bool operator==(const WeekSaving&) const = default;
};

// Oldest first; the last one is that of `today`.
std::vector<WeekSaving> weeklySavings(const std::vector<DatedBatch>& batches, QDate today, int weeks = 26);

} // namespace lumora
