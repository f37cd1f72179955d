// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the history window asks of the rest of the program.
#pragma once

#include "ui/results/file_browser.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lumora {

struct HistoryActions
{
    FileBrowser fileBrowser;
    // Absent: nothing can be undone here. Whoever does it has the view refreshed when it has ended.
    std::function<void(std::int64_t batch)> undoBatch;
    std::function<void(const std::vector<std::int64_t>& files)> undoFiles;
};

} // namespace lumora
