// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Running another program to its end. Safe on any thread; several may run at once.
#pragma once

#include "system/result.h"

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace lumora {

struct ProcessOutcome
{
    int exitStatus;            // 128 + the signal's number when a signal ended the process
    std::string standardError; // its bytes, at most the first 16 MiB
};

// Launches the program at the absolute path with the arguments (its own name is put before them) and waits
// until it ends, without a time limit. Standard error is read meanwhile, so that it never stalls the program;
// standard input and output are those of this process, no other descriptor is inherited. The program gets a
// process group of its own: Ctrl+C on the terminal does not reach it. A stop kills the whole group at once,
// and the program itself does not outlive this process, however that ends. An Error means that the program
// was not launched, or that its end cannot be told, as where this process ignores SIGCHLD; its description is
// the system's reason alone, for example "Permission denied".
Result<ProcessOutcome> runProcess(const std::filesystem::path& executable,
                                  const std::vector<std::string>& arguments, std::stop_token kill = {});

} // namespace lumora
