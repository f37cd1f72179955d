// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Outputs in a chosen folder that lie in it as their originals lie in the folders that were dropped. Names
// only; any thread.
#pragma once

#include "records/optimizer_settings.h"

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

namespace lumora::ImageOptimizer {

class KeptFolders
{
public:
    // `settings` outlives it.
    KeptFolders(const std::vector<std::filesystem::path>& dropped, const OptimizerSettings& settings);

    // The settings with the folder that this file's output goes to.
    OptimizerSettings settingsFor(const std::filesystem::path& input) const;

private:
    const OptimizerSettings& m_settings;
    std::unordered_set<std::string> m_dropped; // standardized; empty where no folders are kept
};

} // namespace lumora::ImageOptimizer
