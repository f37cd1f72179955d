// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Expands what the user dropped into the flat list of image files to optimize. Never fails: what cannot be
// read contributes nothing. Stateless, any thread; a walk touches the disk, so keep it off the user-interface
// thread.
#pragma once

#include <filesystem>
#include <stop_token>
#include <vector>

namespace lumora::FileInputResolver {

// The supported image files in drop order, inside a folder in the order of the walk, each once (the first
// occurrence wins, as it was dropped or found). Folders are walked at every depth without hidden entries,
// without the inside of packages, and without following links to folders. A stop ends the walk early with
// what was found so far.
std::vector<std::filesystem::path> imageURLs(const std::vector<std::filesystem::path>& dropped,
                                             std::stop_token stop = {});

// A folder whose images are not all found, and the system's reason (errno).
struct UnreadFolder
{
    std::filesystem::path path;
    int reason;
};
// The same, and the folders that contributed nothing or not all because they could not be read.
std::vector<std::filesystem::path> imagesAndUnread(const std::vector<std::filesystem::path>& dropped,
                                                   const std::stop_token& stop,
                                                   std::vector<UnreadFolder>& unread);

// True when the path leads to a folder (links are followed); false also when the file system cannot tell.
bool isDirectory(const std::filesystem::path& path);

} // namespace lumora::FileInputResolver
