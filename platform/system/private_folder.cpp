// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/private_folder.h"

#include "file_errors.h"
#include "noted_drafts.h"
#include "system/file_services.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

namespace lumora {
namespace {

constexpr std::string_view prefix = "lumora-run-";

FileDescriptor opened(const std::filesystem::path& folder)
{
    return FileDescriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

// The system lets a lock go when its process ends, however that happens.
bool isLocked(const FileDescriptor& folder)
{
    return ::flock(folder.get(), LOCK_EX | LOCK_NB) == 0;
}

// Ours, and still under its name: whoever tidies up may have removed a folder before its owner had locked it.
bool stands(const FileDescriptor& folder)
{
    struct stat status = {};
    return ::fstat(folder.get(), &status) == 0 && status.st_nlink > 0 && status.st_uid == ::geteuid();
}

} // namespace

Result<std::shared_ptr<const PrivateFolder>> PrivateFolder::shared()
{
    static std::mutex mutex;
    static std::weak_ptr<const PrivateFolder> current;
    const std::lock_guard lock(mutex);
    if (auto living = current.lock()) return living;
    auto made = make();
    if (made) current = *made;
    return made;
}

Result<std::shared_ptr<const PrivateFolder>> PrivateFolder::make()
{
    constexpr int attempts = 3;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::string path = temporaryDirectory() / (std::string(prefix) + "XXXXXX");
        if (!::mkdtemp(path.data())) return fileError(path, "made", errno);
        FileDescriptor folder = opened(path);
        if (folder.isOpen() && isLocked(folder) && stands(folder)) {
            return std::shared_ptr<const PrivateFolder>(
                new PrivateFolder(std::move(path), std::move(folder)));
        }
        ::rmdir(path.c_str());
    }
    return fileError(temporaryDirectory(), "used", EAGAIN);
}

PrivateFolder::PrivateFolder(std::filesystem::path path, FileDescriptor lock)
    : m_path(std::move(path)), m_lock(std::move(lock))
{
}

PrivateFolder::~PrivateFolder()
{
    // Needs no descriptor, of which there may be none left.
    if (::rmdir(m_path.c_str()) == 0) return;
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

void removeAbandonedFolders()
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(temporaryDirectory(), error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().filename().native().starts_with(prefix)) continue;
        const FileDescriptor folder = opened(entry->path());
        std::error_code ignored;
        if (!folder.isOpen() || !stands(folder) || !isLocked(folder)) continue;
        removeNotedDrafts(entry->path());
        std::filesystem::remove_all(entry->path(), ignored);
    }
}

} // namespace lumora
