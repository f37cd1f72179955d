// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What lies in the user's Trash, looked for by the place that it came from. Any thread; reads one small file
// for every file in the Trash.
#pragma once

#include <filesystem>
#include <optional>

namespace lumora {

// Where the Trash keeps the file that had this absolute path: the one that was thrown away last, if several
// had it. Absent when none is there.
std::optional<std::filesystem::path> findInTrash(const std::filesystem::path& path);

} // namespace lumora
