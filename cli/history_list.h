// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The command "history". Main thread only.
#pragma once

#include "cli/command_line.h"

namespace lumora::cli {

class Console;

// Changes what was asked for, else prints the batches, newest first. Returns the exit status.
int showHistory(const CommandLine& line, Console& console);

} // namespace lumora::cli
