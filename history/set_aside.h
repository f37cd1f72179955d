// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A database that cannot be used makes room for a new one and stays for whoever wants to look. Any thread.
#pragma once

#include <filesystem>
#include <string_view>

namespace lumora {

// Renames the database and its log to "history-damaged-1.sqlite" or the next free number; what stands there
// may be anything. Returns the new name; empty when it could not be renamed.
std::filesystem::path setAside(const std::filesystem::path& file, std::string_view why);

} // namespace lumora
