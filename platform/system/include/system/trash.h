// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The user's Trash, as the desktop keeps it. Safe on any thread.
#pragma once

#include "system/regular_file.h"
#include "system/result.h"

#include <filesystem>
#include <optional>
#include <string>

namespace lumora {

// Moves the file, or a link and not what it leads to, to the Trash. A failure leaves it untouched where it
// is; some file systems have no Trash, which is such a failure.
Status moveToTrash(const std::filesystem::path& path);

// Where in the Trash the file lies that had this path until a moment ago; `file` is what linkStamp() said of
// it then. Absent when it is not found.
std::optional<std::filesystem::path> placeInTrash(const std::filesystem::path& path, const FileStamp& file);

// Gives the file a further name in the Trash: it stays where it is, and whoever then replaces it takes
// nothing away. Returns that name. Fails where moveToTrash() does, and where the Trash lies in another file
// system.
Result<std::filesystem::path> keepInTrash(const std::filesystem::path& path);
// Takes it away again.
void removeFromTrash(const std::filesystem::path& trashed);

// Brings a file back from where it lies in the Trash to a path that must be free; nothing is replaced. Its
// time comes along. `isTaken` tells from others the failure at a path that is not free.
struct NotTakenBack
{
    bool isTaken;
    std::string description;
};
Result<Done, NotTakenBack> takeFromTrash(const std::filesystem::path& trashed,
                                         const std::filesystem::path& path);

} // namespace lumora
