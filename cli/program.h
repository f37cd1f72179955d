// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace lumora::cli {

// The whole program on the standard streams. `arguments` without the program's name. Returns the exit status.
int runProgram(const std::vector<std::string>& arguments);

} // namespace lumora::cli
