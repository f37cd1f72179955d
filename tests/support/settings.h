// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Settings that a test changes in the one or two places it is about; the rest are the defaults of a first
// launch.
#pragma once

#include "records/optimizer_settings.h"

#include <ostream>

namespace lumora {

// Names the format in what a test prints.
inline void PrintTo(OutputFormat format, std::ostream* out)
{
    *out << rawValue(format);
}

} // namespace lumora

namespace lumora::test {

struct SettingsDraft
{
    ResizeMode resizeMode = ResizeMode::maxWidth;
    std::int64_t maximumPixels = 2560;
    OutputFormat outputFormat = OutputFormat::webp;
    double quality = 82.0;
    bool optimizeColorForSharing = true;
    bool removeColorManagement = true;
    bool removeMetadata = true;
    DestinationMode destinationMode = DestinationMode::originalLocation;
    std::optional<std::filesystem::path> destinationFolderURL = {};
    std::string filenamePrefix = {};
    std::string filenameSuffix = {};
    bool moveOriginalToTrash = false;
    bool preserveModificationTime = true;
    bool warnBeforeOverwrite = false;
    bool onlySmaller = false;
};

inline OptimizerSettings settings(const SettingsDraft& d = {})
{
    return {d.resizeMode,
            d.maximumPixels,
            d.outputFormat,
            d.quality,
            d.optimizeColorForSharing,
            d.removeColorManagement,
            d.removeMetadata,
            d.destinationMode,
            d.destinationFolderURL,
            d.filenamePrefix,
            d.filenameSuffix,
            d.moveOriginalToTrash,
            d.preserveModificationTime,
            d.warnBeforeOverwrite,
            defaults::trashReplaced,
            defaults::skipOptimized,
            d.onlySmaller};
}

} // namespace lumora::test
