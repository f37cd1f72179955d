// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What keeps programs that share a history out of each other's way, for as long as the descriptor is open.
// Any thread; blocks for seconds at most.
#pragma once

#include "system/file_descriptor.h"

#include <filesystem>
#include <optional>

namespace lumora {

// Nobody else makes, replaces or opens the history; -1 where that cannot be had in time.
FileDescriptor lockHistory(const std::filesystem::path& file);

// Nobody else takes a file back. Absent where that cannot be had in time; -1 where there is no place for a
// lock.
std::optional<FileDescriptor> lockUndo(const std::filesystem::path& file);

} // namespace lumora
