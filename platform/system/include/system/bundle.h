// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The application directory that the running program lies in, and what its information dictionary says.
// Thread-safe.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

// The directory that holds Contents/MacOS/{the program}, links resolved; for a program that lies elsewhere,
// its folder.
std::filesystem::path mainBundlePath();

// The string under the key in the bundle's Contents/Info.plist (a property list in XML); absent when there is
// no such file, it is damaged before the key, the key is missing, or its value is not a string.
std::optional<std::string> infoDictionaryValue(const std::filesystem::path& bundle, std::string_view key);

} // namespace lumora
