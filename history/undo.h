// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Takes a batch back: outputs that are still what was written go to the Trash, originals and what was
// replaced come out of it. Nothing is ever overwritten or removed, and at every moment each file is in its
// place or in the Trash; so an undo that was cut off can be run again, and one that is run twice finds
// nothing to do. What was changed since, is missing, or whose place is taken stays as it is. One thread;
// blocks.
#pragma once

#include "history/history.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>

namespace lumora {

struct UndoneFile
{
    std::filesystem::path source;
    std::filesystem::path output;
    bool isUndone;       // or would be
    std::string message; // for its row
};

enum class UndoMode { forReal, dryRun };

// The last batch first file of it last; `report` is called for each file that had an output. Returns false
// when the history cannot be read.
bool undoBatch(History& history, std::int64_t batch, UndoMode mode,
               const std::function<void(const UndoneFile&)>& report, const std::stop_token& stop = {});

// A single file of a batch. Does not mark it in the history.
UndoneFile undoFile(const FileRecord& file, UndoMode mode);

} // namespace lumora
