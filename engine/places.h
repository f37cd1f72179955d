// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Names of files with the links in their folders resolved, and spelled alike where the case of letters may
// not count: two that are equal are one place on the disk. Asks the disk once about each folder. One thread.
#pragma once

#include <filesystem>
#include <string>
#include <unordered_map>

namespace lumora::ImageOptimizer {

class Places
{
public:
    std::string of(const std::filesystem::path& file);

private:
    struct Folder
    {
        std::string prefix;
        bool ignoresCase = false;
    };

    std::unordered_map<std::string, Folder> m_folders;
};

} // namespace lumora::ImageOptimizer
