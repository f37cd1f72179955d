// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// readdir rather than std::filesystem's iterator, which builds a whole path for every entry only to be asked
// for the last component.
#include "engine/folder_entries.h"

#include <cerrno>
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

FolderListing readFolder(const std::string& path, LinkedFolder links, const std::stop_token& stop)
{
    FolderListing listing;
    const Folder folder = openFolder(path, links);
    if (!folder) {
        listing.failure = errno;
        return listing;
    }
    while (!stop.stop_requested()) {
        errno = 0;
        const dirent* const entry = readdir(folder.get());
        if (!entry) {
            listing.failure = errno;
            break;
        }
        if (entry->d_name[0] != '.')
            listing.entries.push_back({entry->d_name, isFolderEntry(folder.get(), *entry)});
    }
    return listing;
}

bool isFolder(const std::filesystem::path& path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

} // namespace lumora
