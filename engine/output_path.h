// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where the output of one file goes when it has no neighbours: the decisions on names, made safe against
// links. Asks the file system and changes nothing; any thread.
#pragma once

#include "records/optimizer_settings.h"

#include <filesystem>
#include <optional>
#include <string>

namespace lumora::ImageOptimizer {

// Never a path that leads to the input. `sourceType` is the identifier of the input's content, `below` leads
// from a chosen folder to the one that the output goes to. Throws missingDestinationFolder.
std::filesystem::path outputPath(const std::filesystem::path& input,
                                 const std::optional<std::string>& sourceType,
                                 const OptimizerSettings& settings, const std::filesystem::path& below = {});

// Whether two paths lead to one file, by their names or through links.
bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b);

} // namespace lumora::ImageOptimizer
