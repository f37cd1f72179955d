// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Deciding what a name is by its extension. Pure function; thread-safe.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>

namespace lumora {

// Whether the name's extension, ASCII letters in any case, is one of these lower-case ones (without the dot).
bool hasExtension(const std::filesystem::path& path, std::span<const std::string_view> extensions);

} // namespace lumora
