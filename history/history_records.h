// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the history remembers, one a row. Values.
#pragma once

#include "records/file_trace.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace lumora {

struct BatchRecord
{
    std::int64_t id = 0;   // from 1 on, never given twice
    std::int64_t time = 0; // of its start, seconds since 1970
    std::string origin;    // the program that ran it
    std::string settings;  // for people
};

struct FileRecord
{
    std::int64_t id = 0;
    std::filesystem::path source;
    std::optional<std::filesystem::path> output = {}; // absent: nothing was written
    std::int64_t originalBytes = 0;
    std::int64_t outputBytes = 0;
    bool isSuccess = false;
    std::string message = {};
    FileTrace trace = {};
    bool isUndone = false;
};

// A batch and what its files came to.
struct BatchSummary
{
    BatchRecord batch;
    std::int64_t files = 0;
    std::int64_t written = 0; // those with an output
    std::int64_t undone = 0;
    std::int64_t originalBytes = 0; // of those with an output
    std::int64_t outputBytes = 0;
    std::int64_t saved = 0; // bytes, by those of them that are not undone
};

enum class HistoryFilter { all, written, notWritten, undone };

// Which files are asked for.
struct FileQuery
{
    std::optional<std::int64_t> batch = {}; // absent: of every one
    // What the name of the source or of the output holds, in capitals or not; empty: anything.
    std::string name = {};
    HistoryFilter filter = HistoryFilter::all;
};

// A file that was found, of which there may be very many.
struct FoundFile
{
    std::int64_t id = 0;
    std::int64_t batch = 0;
    bool hasOutput = false;
    bool isUndone = false;

    bool operator==(const FoundFile&) const = default;
};

// What is dropped, oldest first.
struct HistoryLimits
{
    std::int64_t files = 200'000;
    std::int64_t days = 365;
};

} // namespace lumora
