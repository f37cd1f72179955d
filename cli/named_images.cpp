// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/named_images.h"

#include "engine/file_input_resolver.h"
#include "engine/folder_entries.h"
#include "engine/image_file_filter.h"
#include "system/file_services.h"
#include "system/paths.h"

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

std::vector<std::string> complaintsAbout(const std::vector<std::filesystem::path>& named,
                                         const std::vector<std::filesystem::path>& images,
                                         const std::vector<FileInputResolver::UnreadFolder>& unread)
{
    const FoundImages found(images);
    std::vector<std::string> complaints;
    const auto complain = [&](const std::filesystem::path& path, const std::string& reason) {
        complaints.push_back(path.native() + ": " + reason);
    };
    const auto isUnread = [&](const auto& path) {
        return std::ranges::find(unread, path, &FileInputResolver::UnreadFolder::path) != unread.end();
    };
    for (const auto& path : named) {
        if (ImageFileFilter::isImage(path) || isUnread(path)) continue;
        if (!fileExists(path))
            complain(path, "there is no such file or folder");
        else if (!isFolder(path))
            complain(path, "this is not a supported kind of image file");
        else if (!found.hasSomeIn(path))
            complain(path, "there is no supported image file in this folder");
    }
    for (const auto& [folder, reason] : unread)
        complain(folder, std::generic_category().message(reason));
    return complaints;
}

} // namespace

NamedImages findImages(const std::vector<std::filesystem::path>& named, const std::stop_token& stop)
{
    std::vector<FileInputResolver::UnreadFolder> unread;
    NamedImages result{FileInputResolver::imagesAndUnread(named, stop, unread), {}};
    if (!stop.stop_requested()) result.complaints = complaintsAbout(named, result.images, unread);
    return result;
}

} // namespace lumora::cli
