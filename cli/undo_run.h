// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The command "undo". Main thread only.
#pragma once

#include "cli/command_line.h"

namespace lumora::cli {

class Console;

// Takes the batch back, or the last one, with a row for each file. Blocks. The exit status: 0, or 1 when
// something stays as it is or there is no such batch.
int undo(const CommandLine& line, Console& console);

} // namespace lumora::cli
