// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/file_state.h"

#include "system/paths.h"
#include "system/regular_file.h"

namespace lumora {

std::optional<FileState> stateAt(const std::filesystem::path& path)
{
    const auto stamp = linkStamp(path);
    if (!stamp) return std::nullopt;
    return fileState(*stamp);
}

std::filesystem::path resolvedPlace(const std::filesystem::path& path)
{
    std::error_code error;
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    const std::filesystem::path folder = std::filesystem::canonical(absolute.parent_path(), error);
    return error ? standardized(path) : folder / absolute.filename();
}

} // namespace lumora
