// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output_path.h"

#include "engine/output_naming.h"
#include "engine/places.h"
#include "system/name_case.h"
#include "system/paths.h"

namespace lumora::ImageOptimizer {

// Links give the input further paths that names alone cannot tell from another file.
std::filesystem::path outputPath(const std::filesystem::path& input,
                                 const std::optional<std::string>& sourceType,
                                 const OptimizerSettings& settings, const std::filesystem::path& below)
{
    std::filesystem::path output = outputURL(input, sourceType, settings, below);
    if (!isSameFile(output, input)) return output;
    const auto besides = outputPathBesideSource(input, sourceType, settings, below);
    output = besides;
    for (int number = 2; isSameFile(output, input); ++number)
        output = numbered(besides, number);
    return output;
}

bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b)
{
    std::error_code missing;
    if (standardized(a) == standardized(b) || std::filesystem::equivalent(a, b, missing)) return true;
    // Not every file system that ignores case gives a file one number.
    if (caseFolded(a.filename().native()) != caseFolded(b.filename().native())) return false;
    Places places;
    return places.of(a) == places.of(b);
}

} // namespace lumora::ImageOptimizer
