// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The totals over every file ever processed, and their JSON text. A value.
#pragma once

#include "records/processing_result.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

struct LifetimeStats
{
    using Clock = std::chrono::system_clock;

    std::int64_t filesProcessed = 0; // results recorded, successful or not
    std::int64_t filesSucceeded = 0;
    std::int64_t originalBytes = 0; // these and all below: of successful results only
    std::int64_t outputBytes = 0;
    std::int64_t grossBytesSaved = 0; // the sum of the positive savings
    std::int64_t netBytesSaved = 0;   // the sum of all savings; negative when the outputs grew
    std::int64_t largestSingleSaveBytes = 0;
    std::optional<Clock::time_point> lastProcessedAt; // absent before the first success

    bool operator==(const LifetimeStats&) const = default;

    // Counts one result. A total beyond 64 bits ends the program with a message: a wrong total is worse.
    void add(const ProcessingResult& result, Clock::time_point now);
};

// One key a line in alphabetical order, indented by two blanks, a blank on each side of the colon; the date
// in UTC to whole seconds, left out when absent.
std::string toJson(const LifetimeStats& stats);

// Absent unless the text is a JSON object with all seven totals as 64-bit integers (a number with a fraction
// or an exponent is none) and, if at all, a date as toJson writes it or with an offset from UTC. Other keys
// are ignored.
std::optional<LifetimeStats> lifetimeStatsFromJson(std::string_view json);

} // namespace lumora
