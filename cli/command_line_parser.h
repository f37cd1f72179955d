// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Arguments to what they ask for, by the C library's getopt_long: its conventions (mixed order,
// "--name=value", unambiguous abbreviations, joined letters, "--") are those that users know. Touches nothing
// but its arguments and getopt's own state, so one thread at a time.
#pragma once

#include "cli/command_line.h"
#include "cli/usage_error.h"

#include <string>
#include <variant>
#include <vector>

namespace lumora::cli {

// `arguments` without the program's name. Options and paths may be mixed; everything after "--" is a path.
std::variant<CommandLine, UsageError> parseCommandLine(const std::vector<std::string>& arguments);

} // namespace lumora::cli
