// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What each setting is until the user chooses: the same in the application and on the command line, and told
// by its help. No folder is chosen by default.
#pragma once

#include "records/option_enums.h"

#include <cstdint>

namespace lumora::defaults {

inline constexpr ResizeMode resizeMode = ResizeMode::maxWidth;
inline constexpr std::int64_t maximumPixels = 2560;
inline constexpr OutputFormat outputFormat = OutputFormat::webp;
inline constexpr double quality = 82;
inline constexpr bool optimizeColorForSharing = true;
inline constexpr bool removeColorManagement = true;
inline constexpr bool removeMetadata = true;
inline constexpr DestinationMode destinationMode = DestinationMode::originalLocation;
inline constexpr const char* filenamePrefix = "";
inline constexpr const char* filenameSuffix = "";
inline constexpr bool moveOriginalToTrash = false;
inline constexpr bool preserveModificationTime = true;
inline constexpr bool warnBeforeOverwrite = false;
inline constexpr bool exitWhenComplete = false;
inline constexpr bool quitWhenClosed = false;
inline constexpr bool keepHistory = true;
inline constexpr bool trashReplaced = true;
inline constexpr bool skipOptimized = false;
inline constexpr bool onlySmaller = false;
inline constexpr bool keepFolders = false;

} // namespace lumora::defaults
