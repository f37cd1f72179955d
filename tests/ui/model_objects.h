// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Settings and statistics of one test, in its own folder.
#pragma once

#include "model/lumora_settings.h"
#include "model/stats_store.h"
#include "tests/support/temporary_directory.h"

namespace lumora::test {

struct ModelObjects
{
    TemporaryDirectory folder;
    LumoraSettings settings{QString::fromStdString((folder / "lumora.conf").string())};
    StatsStore stats{folder.path()};

    void record(std::int64_t before, std::int64_t after, bool success = true)
    {
        stats.record({"in.jpg", std::nullopt, before, after, "", success});
    }
};

} // namespace lumora::test
