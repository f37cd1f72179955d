// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// readdir rather than std::filesystem's iterator, which builds a whole path for every entry only to be asked
// for the last component.
#include "engine/folder_entries.h"

#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

struct CloseFolder
{
    void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

Folder openFolder(const std::string& path, LinkedFolder links)
{
    const int noFollow = links == LinkedFolder::refuse ? O_NOFOLLOW : 0;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | noFollow);
    if (descriptor < 0) return nullptr;
    Folder folder(fdopendir(descriptor));
    if (!folder) ::close(descriptor);
    return folder;
}

bool isFolderEntry(DIR* folder, const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN) return entry.d_type == DT_DIR;
    struct stat status;
    return ::fstatat(dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
           S_ISDIR(status.st_mode);
}

} // namespace

std::vector<FolderEntry> readFolder(const std::string& path, LinkedFolder links, const std::stop_token& stop)
{
    std::vector<FolderEntry> entries;
    const Folder folder = openFolder(path, links);
    if (!folder) return entries;
    while (const dirent* entry = stop.stop_requested() ? nullptr : readdir(folder.get())) {
        if (entry->d_name[0] != '.') entries.push_back({entry->d_name, isFolderEntry(folder.get(), *entry)});
    }
    return entries;
}

bool isFolder(const std::filesystem::path& path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

} // namespace lumora
