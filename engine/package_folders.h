// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Folders that people see as one document or program. Pure function; thread-safe.
#pragma once

#include <filesystem>

namespace lumora {

// By the extension of the folder's name alone, case-insensitive, out of a closed list.
bool isPackage(const std::filesystem::path& folder);

} // namespace lumora
