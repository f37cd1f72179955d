// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The layout of the Trash, as the desktops have agreed on it: files/NAME, and info/NAME.trashinfo with where
// it came from. Any thread.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumora {

// The Trash in the user's data folder.
std::filesystem::path homeTrash();

struct TrashFolder
{
    std::filesystem::path path;
    std::filesystem::path top; // what relative paths in its notes are relative to
};

// Every folder that may be the Trash of this file, or of one that was there, whether it exists or not.
std::vector<TrashFolder> trashFoldersFor(const std::filesystem::path& file);

// The names that a file may get in it, in the order in which they are tried: "a.jpg", "a.2.jpg", "a.3.jpg".
std::string trashName(const std::string& name, int number);

// Of a file in the Trash: what says where it came from.
std::filesystem::path trashInfoOf(const std::filesystem::path& trashed);
// The content of that.
std::string trashInfo(const std::filesystem::path& origin);

} // namespace lumora
