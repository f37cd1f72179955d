// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/unused_paths.h"

#include "engine/folder_entries.h"
#include "engine/image_file_filter.h"
#include "system/file_services.h"
#include "system/paths.h"

#include <unistd.h>

#include <algorithm>
#include <system_error>

namespace lumora::cli {

namespace {

// The standardized images, sorted, so that those inside a folder stand together.
class FoundImages
{
public:
    explicit FoundImages(const std::vector<std::filesystem::path>& images)
    {
        m_keys.reserve(images.size());
        for (const auto& image : images)
            m_keys.push_back(deduplicationKey(image));
        std::ranges::sort(m_keys);
    }

    bool hasSomeIn(const std::filesystem::path& folder) const
    {
        std::string start = deduplicationKey(folder);
        if (!start.ends_with('/')) start += '/';
        const auto first = std::ranges::lower_bound(m_keys, start);
        return first != m_keys.end() && first->starts_with(start);
    }

private:
    std::vector<std::string> m_keys;
};

std::string reasonOfFolder(const std::filesystem::path& folder)
{
    if (access(folder.c_str(), R_OK | X_OK) != 0) return std::generic_category().message(errno);
    return "there is no supported image file in this folder";
}

} // namespace

std::vector<std::string> complaintsAboutUnused(const std::vector<std::filesystem::path>& named,
                                               const std::vector<std::filesystem::path>& images)
{
    const FoundImages found(images);
    std::vector<std::string> complaints;
    const auto complain = [&](const std::filesystem::path& path, const std::string& reason) {
        complaints.push_back(path.native() + ": " + reason);
    };
    for (const auto& path : named) {
        if (ImageFileFilter::isImage(path)) continue;
        if (!fileExists(path))
            complain(path, "there is no such file or folder");
        else if (!isFolder(path))
            complain(path, "this is not a supported kind of image file");
        else if (!found.hasSomeIn(path))
            complain(path, reasonOfFolder(path));
    }
    return complaints;
}

} // namespace lumora::cli
