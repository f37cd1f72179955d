// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The table of lumora-cli's options: the parser, the help text and the test of the man page and the
// completions all read this one. Constants; thread-safe.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::cli {

enum class OptionKey {
    format,
    quality,
    resize,
    maxPixels,
    sRGB,
    removeProfile,
    removeMetadata,
    outputDir,
    prefix,
    suffix,
    existing,
    trashOriginal,
    keepTime,
    jobs,
    dryRun,
    json,
    quiet,
    recordStats,
    version,
    help,
};

struct Option
{
    OptionKey key;
    char letter;               // 0 when there is only the long name
    std::string_view name;     // without the two dashes
    std::string_view argument; // what stands for the value in the help; empty when the option takes none
    bool negatable;            // also known as "no-" and the name
    std::vector<std::string> values; // the only values allowed; empty when any is
    std::string_view help;
};

// In the order in which the help lists them.
std::span<const Option> options();

} // namespace lumora::cli
