// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/kept_folders.h"

#include "system/paths.h"

#include <system_error>

namespace lumora::ImageOptimizer {

KeptFolders::KeptFolders(const std::vector<std::filesystem::path>& dropped, const OptimizerSettings& settings)
{
    if (!settings.keepFolders || settings.destinationMode != DestinationMode::selectedFolder) return;
    for (const auto& item : dropped)
        m_dropped.insert(standardized(item).native());
}

std::filesystem::path KeptFolders::below(const std::filesystem::path& input) const
{
    if (m_dropped.empty()) return {};
    const std::filesystem::path folder = standardized(input).parent_path();
    for (std::filesystem::path root = folder;; root = root.parent_path()) {
        if (m_dropped.contains(root.native())) {
            std::filesystem::path below = folder.lexically_relative(root);
            return below == "." ? std::filesystem::path() : below;
        }
        if (!root.has_relative_path()) return {};
    }
}

std::vector<std::filesystem::path> makeFolders(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> missing;
    std::error_code error;
    for (auto at = folder; at.has_relative_path() && !std::filesystem::exists(at, error);
         at = at.parent_path())
        missing.push_back(at);
    std::vector<std::filesystem::path> made;
    for (auto outermost = missing.rbegin(); outermost != missing.rend(); ++outermost) {
        if (std::filesystem::create_directory(*outermost, error)) made.push_back(*outermost);
    }
    return made;
}

} // namespace lumora::ImageOptimizer
