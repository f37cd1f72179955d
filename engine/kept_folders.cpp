// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/kept_folders.h"

#include "system/paths.h"

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

} // namespace lumora::ImageOptimizer
