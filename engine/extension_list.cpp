// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/extension_list.h"

#include "system/ascii.h"
#include "system/paths.h"

#include <algorithm>
#include <string>

namespace lumora {

bool hasExtension(const std::filesystem::path& path, std::span<const std::string_view> extensions)
{
    std::string extension = pathExtension(path);
    std::ranges::transform(extension, extension.begin(), asciiLower);
    return std::ranges::find(extensions, extension) != extensions.end();
}

} // namespace lumora
