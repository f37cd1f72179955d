// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/settings_store.h"

#include "model/folder_bookmark.h"

namespace lumora {

SettingsStore::SettingsStore(const QString& preferencesFileName) : m_settings(preferencesFileName) {}

OptimizerSettings SettingsStore::snapshot() const
{
    return {.resizeMode = m_settings.resizeMode(),
            .maximumPixels = m_settings.maximumPixels(),
            .outputFormat = m_settings.outputFormat(),
            .quality = m_settings.quality(),
            .optimizeColorForSharing = m_settings.optimizeColorForSharing(),
            .removeColorManagement = m_settings.removeColorManagement(),
            .removeMetadata = m_settings.removeMetadata(),
            .destinationMode = m_settings.destinationMode(),
            .destinationFolderURL = destinationFolderURL(),
            .filenamePrefix = m_settings.filenamePrefix().toStdString(),
            .filenameSuffix = m_settings.filenameSuffix().toStdString(),
            .moveOriginalToTrash = m_settings.moveOriginalToTrash(),
            .preserveModificationTime = m_settings.preserveModificationTime(),
            .warnBeforeOverwrite = m_settings.warnBeforeOverwrite(),
            .trashReplaced = m_settings.trashReplaced(),
            .skipOptimized = m_settings.skipOptimized(),
            .onlySmaller = m_settings.onlySmaller(),
            .keepFolders = m_settings.keepFolders()};
}

std::optional<std::filesystem::path> SettingsStore::destinationFolderURL() const
{
    return resolveFolderBookmark(m_settings.destinationFolderBookmark());
}

void SettingsStore::setDestinationFolder(const std::filesystem::path& folder)
{
    if (const auto bookmark = folderBookmark(folder)) m_settings.destinationFolderBookmark.set(*bookmark);
}

} // namespace lumora
