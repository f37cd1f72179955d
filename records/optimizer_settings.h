// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Every user choice of one batch, taken once when the batch starts. The members are constant: a change in the
// preferences reaches the next batch only. A value; copies cross threads freely.
#pragma once

#include "records/default_settings.h"
#include "records/option_enums.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace lumora {

struct OptimizerSettings
{
    const ResizeMode resizeMode;
    const std::int64_t maximumPixels; // the bound of the dimension that resizeMode names
    const OutputFormat outputFormat;
    const double quality; // as the user set it, on a scale of 1 to 100, not clamped here
    const bool optimizeColorForSharing;
    const bool removeColorManagement;
    const bool removeMetadata;
    const DestinationMode destinationMode;
    const std::optional<std::filesystem::path> destinationFolderURL; // absent: none chosen, or it is gone
    const std::string filenamePrefix;
    const std::string filenameSuffix;
    const bool moveOriginalToTrash;
    const bool preserveModificationTime;
    const bool warnBeforeOverwrite;
    // Files that would be replaced without a question go to the Trash.
    const bool trashReplaced = defaults::trashReplaced;
    // What earlier batches have written is not optimized once more.
    const bool skipOptimized = defaults::skipOptimized;
    // Originals stay, or are copied into a chosen folder, whose outputs would be no smaller and need not
    // differ in format, size or direction.
    const bool onlySmaller = defaults::onlySmaller;
    // Outputs in a chosen folder lie in it as their originals lie in the folders that were dropped.
    const bool keepFolders = defaults::keepFolders;

    // 0.01 to 1.0; a quality that is not a number gives 1.0.
    double normalizedQuality() const;
    bool usesLossyCompression() const;
};

// The formulas behind the two derived values, shared with the live settings so that both always agree.
double normalizedQuality(double quality);
bool usesLossyCompression(OutputFormat format);

} // namespace lumora
