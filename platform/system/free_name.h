// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>

namespace lumora {

// Renames to a name that must be free. 0 or errno, EEXIST among them.
int renameToFreeName(const std::filesystem::path& from, const std::filesystem::path& to);

} // namespace lumora
