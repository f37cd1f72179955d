// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/kept_folders.h"

#include "system/paths.h"

#include <utility>

namespace lumora::ImageOptimizer {
namespace {

OptimizerSettings withFolder(const OptimizerSettings& settings, std::filesystem::path folder)
{
    return {.resizeMode = settings.resizeMode,
            .maximumPixels = settings.maximumPixels,
            .outputFormat = settings.outputFormat,
            .quality = settings.quality,
            .optimizeColorForSharing = settings.optimizeColorForSharing,
            .removeColorManagement = settings.removeColorManagement,
            .removeMetadata = settings.removeMetadata,
            .destinationMode = settings.destinationMode,
            .destinationFolderURL = std::move(folder),
            .filenamePrefix = settings.filenamePrefix,
            .filenameSuffix = settings.filenameSuffix,
            .moveOriginalToTrash = settings.moveOriginalToTrash,
            .preserveModificationTime = settings.preserveModificationTime,
            .warnBeforeOverwrite = settings.warnBeforeOverwrite,
            .trashReplaced = settings.trashReplaced,
            .skipOptimized = settings.skipOptimized,
            .onlySmaller = settings.onlySmaller,
            .keepFolders = settings.keepFolders};
}

} // namespace

KeptFolders::KeptFolders(const std::vector<std::filesystem::path>& dropped, const OptimizerSettings& settings)
    : m_settings(settings)
{
    if (!settings.keepFolders || settings.destinationMode != DestinationMode::selectedFolder) return;
    for (const auto& item : dropped)
        m_dropped.insert(standardized(item).native());
}

OptimizerSettings KeptFolders::settingsFor(const std::filesystem::path& input) const
{
    if (m_dropped.empty()) return m_settings;
    const std::filesystem::path folder = standardized(input).parent_path();
    for (std::filesystem::path root = folder;; root = root.parent_path()) {
        if (m_dropped.contains(root.native())) {
            const std::filesystem::path below = folder.lexically_relative(root);
            if (below == ".") return m_settings;
            return withFolder(m_settings, *m_settings.destinationFolderURL / below);
        }
        if (!root.has_relative_path()) return m_settings;
    }
}

} // namespace lumora::ImageOptimizer
