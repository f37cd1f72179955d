// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/folder_bookmark.h"

#include "engine/file_input_resolver.h"
#include "system/paths.h"

namespace lumora {

std::optional<QByteArray> folderBookmark(const std::filesystem::path& folder)
{
    if (!FileInputResolver::isDirectory(folder)) return std::nullopt;
    return QByteArray::fromStdString(standardized(folder).native());
}

std::optional<std::filesystem::path> resolveFolderBookmark(const QByteArray& bookmark)
{
    const std::filesystem::path folder = bookmark.toStdString();
    if (folder.empty() || !folder.is_absolute()) return std::nullopt;
    return FileInputResolver::isDirectory(folder) ? std::optional(folder) : std::nullopt;
}

} // namespace lumora
