// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The start of another program. vfork rather than fork: it does not copy the page tables of a process that
// holds pictures. And rather than posix_spawn, which cannot tie a child's life to its parent's.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

struct LaunchedStreams
{
    // Descriptors of this process; absent: as this process has them.
    std::optional<int> input = std::nullopt;
    std::optional<int> output = std::nullopt;
    std::optional<int> error = std::nullopt;
    // Becomes the descriptor `channelNumber` of the program.
    std::optional<int> channel = std::nullopt;
    static constexpr int channelNumber = 3;
};

enum class Environment { inherited, empty };

// The process, or errno as a negative number. The program's own name is put before the arguments. It inherits
// no descriptor but the streams, gets a process group of its own and the signal state of a fresh process, and
// does not outlive the thread that started it. Any thread.
pid_t launchProgram(const std::filesystem::path& executable, std::vector<std::string> arguments,
                    const LaunchedStreams& streams, Environment environment);

} // namespace lumora
