// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The user's consent to write into the folders of dropped files. Asked once a folder and run, and only where
// a sandbox stands between the program and the folders. Main thread only, but for uniqueParentFolders.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace lumora {

// Asks for one folder; answers with the folder that the user granted, or absent when refused.
using SaveAccessRequest = std::function<std::optional<std::filesystem::path>(const std::filesystem::path&)>;

// Outside a sandbox every folder is granted at once; inside one, which `marker` shows by being there, `panel`
// asks.
SaveAccessRequest saveAccessRequest(SaveAccessRequest panel,
                                    const std::filesystem::path& marker = "/.flatpak-info");

// What the panel says about a folder.
std::string saveAccessMessage(const std::filesystem::path& folder);

// The parents of the files, each once, in the order of their first file. Any thread.
std::vector<std::filesystem::path> uniqueParentFolders(const std::vector<std::filesystem::path>& files);

// The grants of this run.
class FolderAccess
{
public:
    explicit FolderAccess(SaveAccessRequest request);

    // The granted folder for each of `folders`; absent as soon as one is refused (grants made before stay).
    std::optional<std::vector<std::filesystem::path>>
    obtain(const std::vector<std::filesystem::path>& folders);

private:
    SaveAccessRequest m_request;
    std::unordered_map<std::string, std::filesystem::path>
        m_granted; // by deduplication key of the asked folder
};

} // namespace lumora
