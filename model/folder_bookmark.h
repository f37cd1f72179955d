// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How a chosen folder is kept in the preferences: the bytes of its absolute path, empty for no folder.
#pragma once

#include <QByteArray>

#include <filesystem>
#include <optional>

namespace lumora {

// Absent when the path leads to no folder.
std::optional<QByteArray> folderBookmark(const std::filesystem::path& folder);

// Absent when the bookmark is empty or its folder is gone.
std::optional<std::filesystem::path> resolveFolderBookmark(const QByteArray& bookmark);

} // namespace lumora
