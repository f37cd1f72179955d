// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/lifetime_stats.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace lumora {
namespace {

[[noreturn]] void endOnOverflow()
{
    std::fputs("lumora: the lifetime totals no longer fit into 64 bits\n", stderr);
    std::abort();
}

std::int64_t sum(std::int64_t a, std::int64_t b)
{
    std::int64_t result = 0;
    if (__builtin_add_overflow(a, b, &result)) endOnOverflow();
    return result;
}

std::int64_t difference(std::int64_t a, std::int64_t b)
{
    std::int64_t result = 0;
    if (__builtin_sub_overflow(a, b, &result)) endOnOverflow();
    return result;
}

} // namespace

void LifetimeStats::add(const ProcessingResult& result, Clock::time_point now)
{
    filesProcessed = sum(filesProcessed, 1);
    if (!result.isSuccess) return;

    const std::int64_t saving = difference(result.originalBytes, result.outputBytes);
    filesSucceeded = sum(filesSucceeded, 1);
    originalBytes = sum(originalBytes, result.originalBytes);
    outputBytes = sum(outputBytes, result.outputBytes);
    grossBytesSaved = sum(grossBytesSaved, std::max<std::int64_t>(saving, 0));
    netBytesSaved = sum(netBytesSaved, saving);
    largestSingleSaveBytes = std::max(largestSingleSaveBytes, saving);
    lastProcessedAt = now;
}

} // namespace lumora
