// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Outputs in a chosen folder that lie in it as their originals lie in the folders that were dropped. Any
// thread.
#pragma once

#include "records/optimizer_settings.h"

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

namespace lumora::ImageOptimizer {

// Names only.
class KeptFolders
{
public:
    KeptFolders(const std::vector<std::filesystem::path>& dropped, const OptimizerSettings& settings);

    // From the chosen folder to the one that this file's output goes to; empty where they are the same.
    std::filesystem::path below(const std::filesystem::path& input) const;

private:
    std::unordered_set<std::string> m_dropped; // standardized; empty where no folders are kept
};

// Makes what is missing of a folder and of those that it lies in, and returns what was made, the outermost
// first. What cannot be made is missed when the output is written there.
std::vector<std::filesystem::path> makeFolders(const std::filesystem::path& folder);

} // namespace lumora::ImageOptimizer
