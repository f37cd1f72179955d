// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The words that, in the place of the first argument, ask for something else than to optimize. A file of such
// a name is written "./undo". Thread-safe.
#pragma once

#include "cli/command_line.h"

#include <string>
#include <vector>

namespace lumora::cli {

struct Option;

Action commandIn(const std::vector<std::string>& arguments);

// Throw UsageError for what the command cannot take.
void checkGoesWith(Action action, const Option& option);
// What is left when the options are taken away.
void takeOperands(CommandLine& line, const std::vector<std::string>& operands);

} // namespace lumora::cli
