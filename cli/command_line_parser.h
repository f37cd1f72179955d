// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Splits arguments into options of the table and the rest, by the C library's getopt_long: its conventions
// (mixed order, "--name=value", unambiguous abbreviations, joined letters, "--") are those that users know.
#pragma once

#include "cli/options.h"

#include <string>
#include <vector>

namespace lumora::cli {

struct ParsedOption
{
    const Option* option;
    bool negated;
    std::string value; // empty when the option takes none
};

struct ParsedArguments
{
    std::vector<ParsedOption> options; // as given
    std::vector<std::string> operands;
};

// Throws UsageError: unknown options, missing or needless values, values outside an option's list.
ParsedArguments parseOptions(const std::vector<std::string>& arguments);

} // namespace lumora::cli
