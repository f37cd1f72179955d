// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Records results until it is killed: record_forever DATA-FOLDER. Prints a line once the first is on its way.
#include "model/stats_store.h"

#include <cstdio>

int main(int count, char** arguments)
{
    if (count != 2) return 2;
    lumora::StatsStore store{std::filesystem::path(arguments[1])};
    std::puts("recording");
    std::fflush(stdout);
    for (;;)
        store.record({"/in.jpg", "/out.webp", 1'000'000, 600'000, "Saved", true});
}
