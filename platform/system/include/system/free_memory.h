// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>

namespace lumora {

// How many bytes this process could still take without pushing anything out: what the kernel estimates to be
// available, or what is left to the control groups that the process lies in where that is less. 0 when the
// system tells nothing. `root` is where /proc and /sys are found. Any thread.
std::int64_t freeMemory(const std::filesystem::path& root = "/");

} // namespace lumora
