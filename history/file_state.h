// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files as the history knows them. Any thread.
#pragma once

#include "records/file_trace.h"

#include <filesystem>
#include <optional>

namespace lumora {

// Of a link itself; absent where nothing is.
std::optional<FileState> stateAt(const std::filesystem::path& path);

// The path with the links in its folders resolved, so that one file has one name whatever the way to it.
std::filesystem::path resolvedPlace(const std::filesystem::path& path);

} // namespace lumora
