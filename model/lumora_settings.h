// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The user's choices as the views see them: settings.quality() reads one, settings.quality.set(70) writes it,
// and `changed` tells when any of them holds another value, whoever changed it. The object keeps no copy of a
// value. Main thread only.
#pragma once

#include "model/preferences_file.h"
#include "model/setting_value.h"
#include "records/default_settings.h"
#include "records/option_enums.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <cstdint>

namespace lumora {

class LumoraSettings : public QObject
{
    Q_OBJECT

    PreferencesFile m_file;

public:
    explicit LumoraSettings(const QString& fileName = PreferencesFile::defaultFileName(),
                            QObject* parent = nullptr);

    // The file behind the settings, for the few values of the application that no view shows.
    PreferencesFile& preferencesFile() { return m_file; }

    // clang-format off
    SettingValue<ResizeMode>      resizeMode{m_file, "resizeMode", defaults::resizeMode};
    SettingValue<std::int64_t>    maximumPixels{m_file, "maximumPixels", defaults::maximumPixels};
    SettingValue<OutputFormat>    outputFormat{m_file, "outputFormat", defaults::outputFormat};
    SettingValue<double>          quality{m_file, "quality", defaults::quality};
    SettingValue<bool>            optimizeColorForSharing{m_file, "optimizeColorForSharing", defaults::optimizeColorForSharing};
    SettingValue<bool>            removeColorManagement{m_file, "removeColorManagement", defaults::removeColorManagement};
    SettingValue<bool>            removeMetadata{m_file, "removeMetadata", defaults::removeMetadata};
    SettingValue<DestinationMode> destinationMode{m_file, "destinationMode", defaults::destinationMode};
    // Made and read by folder_bookmark.h; empty when no folder is chosen.
    SettingValue<QByteArray>      destinationFolderBookmark{m_file, "destinationFolderBookmark", QByteArray()};
    SettingValue<QString>         filenamePrefix{m_file, "filenamePrefix", QString::fromUtf8(defaults::filenamePrefix)};
    SettingValue<QString>         filenameSuffix{m_file, "filenameSuffix", QString::fromUtf8(defaults::filenameSuffix)};
    SettingValue<bool>            moveOriginalToTrash{m_file, "moveOriginalToTrash", defaults::moveOriginalToTrash};
    SettingValue<bool>            preserveModificationTime{m_file, "preserveModificationTime", defaults::preserveModificationTime};
    SettingValue<bool>            warnBeforeOverwrite{m_file, "warnBeforeOverwrite", defaults::warnBeforeOverwrite};
    SettingValue<bool>            exitWhenComplete{m_file, "exitWhenComplete", defaults::exitWhenComplete};
    SettingValue<bool>            quitWhenClosed{m_file, "quitWhenClosed", defaults::quitWhenClosed};
    SettingValue<bool>            trashReplaced{m_file, "trashReplaced", defaults::trashReplaced};
    SettingValue<bool>            skipOptimized{m_file, "skipOptimized", defaults::skipOptimized};
    SettingValue<bool>            onlySmaller{m_file, "onlySmaller", defaults::onlySmaller};
    SettingValue<bool>            keepFolders{m_file, "keepFolders", defaults::keepFolders};
    SettingValue<bool>            keepHistory{m_file, "keepHistory", defaults::keepHistory};
    // clang-format on

    // The same formulas as OptimizerSettings, of the values stored now.
    double normalizedQuality() const;
    bool usesLossyCompression() const;

Q_SIGNALS:
    // The setting of this key reads differently now.
    void changed(const QString& key);
};

} // namespace lumora
