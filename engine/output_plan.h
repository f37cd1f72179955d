// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a run of one file would write and where, decided before anything is touched. Asks the file system and
// changes nothing; any thread.
#pragma once

#include "engine/batch_names.h"
#include "records/optimizer_settings.h"

#include <filesystem>
#include <string>

namespace lumora::ImageOptimizer {

struct OutputPlan
{
    std::filesystem::path path; // never one that leads to the input
    bool isTaken;               // by anything, a link that leads nowhere included
    std::string typeIdentifier; // to encode to
};

// `sourceType` is the identifier of the input's content. Throws missingDestinationFolder, unreadableImage
// when it is not the file that its batch has found, unsupportedFormat when nothing here writes the type, or a
// PlatformError when a folder stands at the path.
OutputPlan plan(const std::filesystem::path& input, const std::string& sourceType,
                const OptimizerSettings& settings, const BatchNames& names);

} // namespace lumora::ImageOptimizer
