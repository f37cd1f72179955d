// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where outputs go and what becomes of the originals, in words. Looks at the chosen folder. Main thread.
#pragma once

#include <QString>

#include <filesystem>

namespace lumora {

class LumoraSettings;

// The folder as people write it: below the user's home it begins with "~".
QString folderText(const std::filesystem::path& folder);

// Outputs shall go into a chosen folder, and there is none: never chosen, or gone.
bool lacksDestinationFolder(const LumoraSettings& settings);

// The chosen folder, or that there is none; "~/Web", "No folder chosen yet", "~/Web is gone".
QString chosenFolderText(const LumoraSettings& settings);

// "Next to the originals, originals kept", "Into ~/Web, originals to the Trash".
QString destinationText(const LumoraSettings& settings);

} // namespace lumora
