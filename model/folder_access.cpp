// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/folder_access.h"

#include "system/paths.h"

#include <unordered_set>
#include <utility>

namespace lumora {

SaveAccessRequest saveAccessRequest(SaveAccessRequest panel, const std::filesystem::path& marker)
{
    std::error_code ignored;
    if (std::filesystem::exists(marker, ignored)) return panel;
    return [](const std::filesystem::path& folder) { return std::optional(folder); };
}

std::string saveAccessMessage(const std::filesystem::path& folder)
{
    const std::filesystem::path name = folder.has_filename() ? folder.filename() : folder;
    return "Allow Lumora to save converted images in " + name.native() + ".";
}

std::vector<std::filesystem::path> uniqueParentFolders(const std::vector<std::filesystem::path>& files)
{
    std::vector<std::filesystem::path> folders;
    std::unordered_set<std::string> spellings; // most files share a spelling; only a new one is standardized
    std::unordered_set<std::string> seen;
    for (const auto& file : files) {
        std::filesystem::path folder = file.parent_path();
        if (!spellings.insert(folder.native()).second) continue;
        if (seen.insert(deduplicationKey(folder)).second) folders.push_back(std::move(folder));
    }
    return folders;
}

FolderAccess::FolderAccess(SaveAccessRequest request) : m_request(std::move(request)) {}

std::optional<std::vector<std::filesystem::path>>
FolderAccess::obtain(const std::vector<std::filesystem::path>& folders)
{
    std::vector<std::filesystem::path> granted;
    for (const auto& folder : folders) {
        const std::string key = deduplicationKey(folder);
        auto known = m_granted.find(key);
        if (known == m_granted.end()) {
            const auto answer = m_request(folder);
            if (!answer) return std::nullopt;
            known = m_granted.emplace(key, *answer).first;
        }
        granted.push_back(known->second);
    }
    return granted;
}

} // namespace lumora
