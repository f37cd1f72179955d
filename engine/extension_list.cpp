// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/extension_list.h"

#include "system/paths.h"

#include <algorithm>
#include <string>

namespace lumora {
namespace {

// By hand because the C library's version depends on the locale.
char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

bool hasExtension(const std::filesystem::path& path, std::span<const std::string_view> extensions)
{
    std::string extension = pathExtension(path);
    std::ranges::transform(extension, extension.begin(), lowered);
    return std::ranges::find(extensions, extension) != extensions.end();
}

} // namespace lumora
