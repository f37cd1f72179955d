// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the user asked for on the command line. A value.
#pragma once

#include "records/default_settings.h"
#include "records/optimizer_settings.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lumora::cli {

enum class Action { optimize, undo, showHistory, showHelp, showVersion };
enum class Existing { replace, ask, skip };

struct CommandLine
{
    Action action = Action::optimize;
    std::vector<std::filesystem::path> paths; // at least one when the action is to optimize, else none
    std::optional<std::int64_t> batch;        // to undo; absent: the last
    std::optional<std::int64_t> keepFiles;    // from now on
    std::optional<std::int64_t> keepDays;

    OutputFormat format = defaults::outputFormat;
    ResizeMode resizeMode = defaults::resizeMode;
    double quality = defaults::quality;
    std::int64_t maximumPixels = defaults::maximumPixels;
    bool sRGB = defaults::optimizeColorForSharing;
    bool removeProfile = defaults::removeColorManagement;
    bool removeMetadata = defaults::removeMetadata;
    std::optional<std::filesystem::path> outputDirectory;
    std::string prefix = defaults::filenamePrefix;
    std::string suffix = defaults::filenameSuffix;
    Existing existing = defaults::warnBeforeOverwrite ? Existing::ask : Existing::replace;
    bool trashOriginal = defaults::moveOriginalToTrash;
    bool keepTime = defaults::preserveModificationTime;

    bool trashReplaced = defaults::trashReplaced;
    bool skipOptimized = defaults::skipOptimized;
    bool onlySmaller = defaults::onlySmaller;
    bool keepFolders = defaults::keepFolders;

    std::optional<int> jobs;
    bool dryRun = false;
    bool json = false;
    bool quiet = false;
    bool recordStats = false;
    bool keepHistory = defaults::keepHistory;
    bool clearHistory = false;

    OptimizerSettings settings() const
    {
        return {
            .resizeMode = resizeMode,
            .maximumPixels = maximumPixels,
            .outputFormat = format,
            .quality = quality,
            .optimizeColorForSharing = sRGB,
            .removeColorManagement = removeProfile,
            .removeMetadata = removeMetadata,
            .destinationMode =
                outputDirectory ? DestinationMode::selectedFolder : DestinationMode::originalLocation,
            .destinationFolderURL = outputDirectory,
            .filenamePrefix = prefix,
            .filenameSuffix = suffix,
            .moveOriginalToTrash = trashOriginal,
            .preserveModificationTime = keepTime,
            .warnBeforeOverwrite = existing != Existing::replace,
            .trashReplaced = trashReplaced,
            .skipOptimized = skipOptimized,
            .onlySmaller = onlySmaller,
            .keepFolders = keepFolders,
        };
    }
};

} // namespace lumora::cli
