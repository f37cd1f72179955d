// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_threads.h"

#include <algorithm>
#include <latch>
#include <system_error>
#include <thread>
#include <vector>

namespace lumora {

Status findHevcThreads()
{
    // The encoder takes one for each processor and two of its own; the decoder takes no more than four.
    const unsigned count = std::max(std::thread::hardware_concurrency() + 2, 4U);
    std::latch allTried(1);
    std::vector<std::jthread> threads;
    threads.reserve(count);
    Status status = Done{};
    try {
        while (threads.size() < count)
            threads.emplace_back([&allTried] { allTried.wait(); });
    } catch (const std::system_error&) {
        status = outOfMemory();
    }
    allTried.count_down();
    return status;
}

} // namespace lumora
