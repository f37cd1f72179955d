// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a run would do, without doing it.
#pragma once

#include "cli/command_line.h"

namespace lumora::cli {

class Console;

// Prints for each image that the paths lead to what would be written where. Reads the headers of the images;
// makes and changes nothing. Blocks. The exit status: 0, or 1 when a file would fail or be skipped, or there
// is none.
int dryRun(const CommandLine& line, Console& console);

} // namespace lumora::cli
