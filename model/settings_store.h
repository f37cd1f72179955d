// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Owns the one LumoraSettings of the application and turns its values into the snapshot of a batch. Main
// thread only.
#pragma once

#include "model/lumora_settings.h"
#include "records/optimizer_settings.h"

#include <QString>

#include <filesystem>
#include <optional>

namespace lumora {

class SettingsStore
{
public:
    explicit SettingsStore(const QString& preferencesFileName = PreferencesFile::defaultFileName());

    LumoraSettings& settings() { return m_settings; }

    // The values of this moment, unclamped; the destination folder is resolved whatever the destination mode
    // is.
    OptimizerSettings snapshot() const;

    // The chosen folder; absent when none was chosen or it is gone (what is stored stays).
    std::optional<std::filesystem::path> destinationFolderURL() const;

    // Changes nothing when the path leads to no folder.
    void setDestinationFolder(const std::filesystem::path& folder);

private:
    LumoraSettings m_settings;
};

} // namespace lumora
