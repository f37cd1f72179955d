// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/paths.h"

namespace lumora {

std::filesystem::path standardized(const std::filesystem::path& url)
{
    std::error_code ignored;
    std::filesystem::path absolute = url.is_absolute() ? url : std::filesystem::current_path(ignored) / url;
    std::filesystem::path normal = absolute.lexically_normal();
    // A trailing separator leaves an empty last component.
    return normal.has_filename() || normal == normal.root_path() ? normal : normal.parent_path();
}

std::string deduplicationKey(const std::filesystem::path& url)
{
    return standardized(url).native();
}

std::string pathExtension(const std::filesystem::path& url)
{
    const std::string extension = url.extension().native();
    return extension.empty() ? extension : extension.substr(1);
}

std::string baseName(const std::filesystem::path& url)
{
    return url.stem().native();
}

} // namespace lumora
