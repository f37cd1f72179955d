// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Takes a batch back: outputs that are still what was written go to the Trash, originals and what was
// replaced come out of it. Nothing is ever overwritten, and nothing removed but the folders that the batch
// made, once they are empty; at every moment each file is in its place or in the Trash. So an undo that was
// cut off can be run again, and one that is run twice finds nothing to do. What was changed since, is
// missing, or whose place is taken stays as it is. One thread; blocks.
#pragma once

#include "history/history.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

struct UndoneFile
{
    std::filesystem::path source;
    std::filesystem::path output;
    std::int64_t originalBytes;
    std::int64_t outputBytes;
    bool isUndone;       // or would be
    std::string message; // for its row
};

// How the messages begin: of what is taken back, and of what stays.
constexpr std::string_view undoneWord = "Undone";
constexpr std::string_view leftWord = "Left as it is: ";
constexpr std::string_view outputLeftWord = "The output is left as it is: ";

enum class UndoMode { forReal, dryRun };

using UndoReport = std::function<void(const UndoneFile&)>;

// In the order of the history, the last one first: what replaced an earlier output goes before that. `report`
// is called for each file that had an output.
void undoFiles(History& history, const std::vector<FileRecord>& files, UndoMode mode,
               const UndoReport& report, const std::stop_token& stop = {});

// All of a batch. Returns false when the history cannot be read.
bool undoBatch(History& history, std::int64_t batch, UndoMode mode, const UndoReport& report,
               const std::stop_token& stop = {});

} // namespace lumora
