// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/places.h"

#include "system/name_case.h"
#include "system/paths.h"

namespace lumora::ImageOptimizer {

std::string Places::of(const std::filesystem::path& file)
{
    const auto [known, isNew] = m_folders.try_emplace(file.parent_path().native());
    Folder& folder = known->second;
    if (isNew) {
        std::error_code error;
        const auto spelled = standardized(known->first.empty() ? "." : known->first);
        const auto resolved = std::filesystem::weakly_canonical(spelled, error);
        folder.prefix = (error ? spelled : resolved).native() + "/";
        folder.ignoresCase = mayIgnoreCase(folder.prefix);
    }
    std::string place = folder.prefix + file.filename().native();
    return folder.ignoresCase ? caseFolded(place) : place;
}

} // namespace lumora::ImageOptimizer
