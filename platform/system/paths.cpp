// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/paths.h"

namespace lumora {

std::filesystem::path standardized(const std::filesystem::path& path)
{
    std::error_code ignored;
    std::filesystem::path absolute =
        path.is_absolute() ? path : std::filesystem::current_path(ignored) / path;
    std::filesystem::path normal = absolute.lexically_normal();
    // A trailing separator leaves an empty last component.
    return normal.has_filename() || normal == normal.root_path() ? normal : normal.parent_path();
}

std::string deduplicationKey(const std::filesystem::path& path)
{
    return standardized(path).native();
}

std::string pathExtension(const std::filesystem::path& path)
{
    const std::string extension = path.extension().native();
    return extension.empty() ? extension : extension.substr(1);
}

std::string baseName(const std::filesystem::path& path)
{
    return path.stem().native();
}

} // namespace lumora
