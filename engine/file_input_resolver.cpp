// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/file_input_resolver.h"

#include "engine/folder_entries.h"
#include "engine/image_file_filter.h"
#include "engine/package_folders.h"
#include "system/paths.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace lumora::FileInputResolver {
namespace {

// The result so far. A walk meets each file once, so that a lone item cannot repeat one: its files need no
// keys, which take half of the time that a large walk spends outside the system.
struct Collection
{
    bool mayRepeat;
    std::vector<std::filesystem::path> paths = {};
    std::unordered_set<std::string> seen = {};
    std::vector<UnreadFolder> unread = {};
};

std::string joined(const std::string& folder, std::string_view name)
{
    std::string path;
    path.reserve(folder.size() + 1 + name.size());
    path += folder;
    if (!folder.ends_with('/')) path += '/';
    path += name;
    return path;
}

// A folder in the middle of its walk. The stack of these takes the place of recursion, so that a deep tree
// costs memory and not the thread's stack; no folder stays open while its subfolders are walked.
struct Level
{
    std::string path; // as found
    std::string key;  // standardized
    std::vector<FolderEntry> entries;
    std::size_t next = 0;
};

// `folderKey` is the standardized folder, which makes the key of everything in it without looking at each
// name.
void appendImage(std::string path, const std::string& folderKey, std::string_view name,
                 Collection& collection)
{
    if (collection.mayRepeat && !collection.seen.insert(joined(folderKey, name)).second) return;
    collection.paths.emplace_back(std::move(path));
}

std::vector<FolderEntry> entriesOf(const std::string& folder, LinkedFolder links, Collection& collection,
                                   const std::stop_token& stop)
{
    FolderListing listing = readFolder(folder, links, stop);
    if (listing.failure != 0) collection.unread.push_back({folder, listing.failure});
    return std::move(listing.entries);
}

void walk(const std::filesystem::path& root, Collection& collection, const std::stop_token& stop)
{
    std::vector<Level> levels;
    levels.push_back({root.native(), deduplicationKey(root),
                      entriesOf(root.native(), LinkedFolder::follow, collection, stop)});
    while (!levels.empty() && !stop.stop_requested()) {
        Level& level = levels.back();
        if (level.next == level.entries.size()) {
            levels.pop_back();
            continue;
        }
        const FolderEntry& entry = level.entries[level.next++];
        std::string path = joined(level.path, entry.name);
        if (ImageFileFilter::isImage(entry.name)) appendImage(path, level.key, entry.name, collection);
        if (!entry.isFolder || isPackage(path)) continue;
        std::string key = joined(level.key, entry.name);
        std::vector<FolderEntry> entries = entriesOf(path, LinkedFolder::refuse, collection, stop);
        levels.push_back({std::move(path), std::move(key), std::move(entries)});
    }
}

void appendImages(const std::filesystem::path& dropped, Collection& collection, const std::stop_token& stop)
{
    if (ImageFileFilter::isImage(dropped)) {
        if (collection.seen.insert(deduplicationKey(dropped)).second) collection.paths.push_back(dropped);
    } else if (isDirectory(dropped)) {
        walk(dropped, collection, stop);
    }
}

} // namespace

std::vector<std::filesystem::path> imageURLs(const std::vector<std::filesystem::path>& dropped,
                                             std::stop_token stop)
{
    std::vector<UnreadFolder> unread;
    return imagesAndUnread(dropped, stop, unread);
}

std::vector<std::filesystem::path> imagesAndUnread(const std::vector<std::filesystem::path>& dropped,
                                                   const std::stop_token& stop,
                                                   std::vector<UnreadFolder>& unread)
{
    Collection collection{.mayRepeat = dropped.size() > 1};
    for (const auto& item : dropped) {
        if (stop.stop_requested()) break;
        appendImages(item, collection, stop);
    }
    unread = std::move(collection.unread);
    return std::move(collection.paths);
}

bool isDirectory(const std::filesystem::path& path)
{
    return isFolder(path);
}

} // namespace lumora::FileInputResolver
