// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The table of lumora-cli's options, which the parser, the help, the man page and the completions are made
// of. Constants; thread-safe.
#pragma once

#include "cli/option_value.h"

#include <span>
#include <string>
#include <string_view>

namespace lumora::cli {

// What an option is for, added up.
inline constexpr unsigned forOptimizing = 1;
inline constexpr unsigned forUndo = 2;
inline constexpr unsigned forHistory = 4;
inline constexpr unsigned forAll = forOptimizing | forUndo | forHistory;

struct Option
{
    std::string_view heading = {}; // of the man page's section that begins here
    char letter = 0;               // 0 when there is only the long name
    std::string_view name;         // without the two dashes
    OptionValue value;
    std::string_view help;
    std::string_view note = {};     // what the help says besides
    std::string_view negation = {}; // the help of "--no-" and the name, which exists when this is not empty
    std::string_view manual = {};   // whole sentences for the man page alone
    unsigned commands = forOptimizing;
};

// In the order in which the help lists them.
std::span<const Option> options();

// "(default 82)" or "(default)" with a space before, or nothing.
std::string defaultText(const Option& option);

} // namespace lumora::cli
