// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What one file of a batch leaves behind besides its result: enough to find it again and to take it back. A
// value.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

// Two that are equal have most probably not been touched between.
struct FileState
{
    std::int64_t size = 0;
    std::int64_t modified = 0; // nanoseconds since 1970

    bool operator==(const FileState&) const = default;
};

struct FileTrace
{
    std::optional<FileState> source = {}; // as it was read
    std::optional<FileState> output = {}; // as it was left
    std::string outputDigest = {};        // of its content; empty: not known
    bool isOriginalTrashed = false;
    std::optional<std::filesystem::path> trashedOriginal = {}; // where, if that is known
    std::optional<FileState> replaced = {};                    // what stood at the output's place
    std::optional<std::filesystem::path> trashedReplaced = {}; // where that went; absent: nowhere
    std::vector<std::filesystem::path> madeFolders = {};       // for the output, the outermost first
};

} // namespace lumora
