// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What lies in the user's Trash, looked for by the place that it came from. Any thread; reads one small file
// for every file in the Trash.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace lumora {

// Where the Trash keeps the file that had this absolute path: the one that was thrown away last, if several
// had it. Absent when none is there.
std::optional<std::filesystem::path> findInTrash(const std::filesystem::path& path);

// The same for many files, for which each Trash is read once: what is thrown away later is not found. One
// thread.
class TrashContents
{
public:
    std::optional<std::filesystem::path> find(const std::filesystem::path& path);

private:
    struct Thrown
    {
        std::string deletionDate;
        std::filesystem::path file;
    };
    using ByPath = std::multimap<std::string, Thrown>; // by the paths that they had

    const ByPath& readOnce(const std::filesystem::path& folder, const std::filesystem::path& top);

    std::map<std::filesystem::path, ByPath> m_folders;
};

} // namespace lumora
