// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Paths as the names of dropped items: bytes, never decoded. Pure functions on names; the file system is not
// asked.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lumora {

// Absolute, without "." and ".." components and doubled or trailing separators; symbolic links are not
// resolved.
std::filesystem::path standardized(const std::filesystem::path& path);

// The key by which a dropped item counts as already seen: the bytes of its standardized path.
std::string deduplicationKey(const std::filesystem::path& path);

// The path's last extension without the dot, as bytes; empty when there is none (".hidden" has none).
std::string pathExtension(const std::filesystem::path& path);

// The last component without its last extension.
std::string baseName(const std::filesystem::path& path);

} // namespace lumora
