// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Folders and their visible entries, as bytes. Thread-safe.
#pragma once

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace lumora {

struct FolderEntry
{
    std::string name;
    bool isFolder; // false for a link to a folder
};

enum class LinkedFolder { follow, refuse };

struct FolderListing
{
    std::vector<FolderEntry> entries;
    int failure = 0; // errno, when the entries are not all there are
};

// In the order of the file system, without names that begin with a dot. What was read until then when the
// folder cannot be read on or the stop is requested.
FolderListing readFolder(const std::string& folder, LinkedFolder links, const std::stop_token& stop);

// True when the path leads to a folder (links are followed); false also when the file system cannot tell.
bool isFolder(const std::filesystem::path& path);

} // namespace lumora
