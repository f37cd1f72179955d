// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes may stand in the file of the statistics: no totals, or some that are written and read back the
// same.
#include "fuzz/fuzzing.h"
#include "model/lifetime_stats.h"

#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (const auto stats = lumora::lifetimeStatsFromJson(text))
        lumora::fuzz::require(lumora::lifetimeStatsFromJson(lumora::toJson(*stats)) == stats);
    return 0;
}
