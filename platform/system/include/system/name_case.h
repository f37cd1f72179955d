// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Folders in which names that differ in the case of their letters alone are one file, as on memory cards and
// on most shares. Any thread.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace lumora {

// Of a folder, or of the one in which it will be made. By the kind of its file system, so that nothing is
// written to find out: true also where only some of that kind are so.
bool mayIgnoreCase(const std::filesystem::path& folder);

// Equal for two names or paths that such a folder may take for one.
std::string caseFolded(std::string_view name);

} // namespace lumora
