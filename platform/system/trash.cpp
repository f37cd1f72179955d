// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/trash.h"

#include "file_errors.h"
#include "free_name.h"
#include "system/file_descriptor.h"
#include "system/file_services.h"
#include "trash_folder.h"

#include <gio/gio.h>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>

namespace lumora {
namespace {

struct Unreference
{
    void operator()(GFile* file) const { g_object_unref(file); }
};

Error trashError(const std::filesystem::path& path, GError* error)
{
    const std::unique_ptr<GError, decltype(&g_error_free)> owner(error, g_error_free);
    return {path.filename().native() + " could not be moved to the Trash: " + owner->message};
}

bool isSameFile(const FileStamp& a, const FileStamp& b)
{
    return a.device == b.device && a.inode == b.inode;
}

// In one Trash. The name is the first that was free then, so that the search ends where none is taken.
std::optional<std::filesystem::path> placeIn(const std::filesystem::path& trash, const std::string& name,
                                             const FileStamp& file)
{
    for (int number = 1;; ++number) {
        std::filesystem::path place = trash / "files" / trashName(name, number);
        const auto stamp = linkStamp(place);
        if (stamp && isSameFile(*stamp, file)) return place;
        if (!stamp && !fileExists(trashInfoOf(place))) return std::nullopt;
    }
}

// 0 or errno; EEXIST when the name is another file's.
int keepAs(const std::filesystem::path& place, const std::filesystem::path& path)
{
    const std::filesystem::path info = trashInfoOf(place);
    const FileDescriptor note(::open(info.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600));
    if (!note.isOpen()) return errno;
    const std::string text = trashInfo(path);
    const bool isWritten = ::write(note.get(), text.data(), text.size()) == static_cast<ssize_t>(text.size());
    if (isWritten && ::linkat(AT_FDCWD, path.c_str(), AT_FDCWD, place.c_str(), 0) == 0) return 0;
    const int reason = isWritten ? errno : ENOSPC;
    ::unlink(info.c_str());
    return reason;
}

} // namespace

Status moveToTrash(const std::filesystem::path& path)
{
    const std::unique_ptr<GFile, Unreference> file(g_file_new_for_path(path.c_str()));
    GError* error = nullptr;
    if (!g_file_trash(file.get(), nullptr, &error)) return trashError(path, error);
    return Done{};
}

std::optional<std::filesystem::path> placeInTrash(const std::filesystem::path& path, const FileStamp& file)
{
    for (const auto& trash : trashFoldersFor(path)) {
        if (auto place = placeIn(trash.path, path.filename(), file)) return place;
    }
    return std::nullopt;
}

Result<std::filesystem::path> keepInTrash(const std::filesystem::path& path)
{
    const std::filesystem::path trash = homeTrash();
    std::error_code error;
    for (const char* folder : {"files", "info"}) {
        if (!std::filesystem::create_directories(trash / folder, error)) continue;
        std::filesystem::permissions(trash / folder, std::filesystem::perms::owner_all, error);
        std::filesystem::permissions(trash, std::filesystem::perms::owner_all, error);
    }
    for (int number = 1;; ++number) {
        std::filesystem::path place = trash / "files" / trashName(path.filename(), number);
        const int reason = keepAs(place, path);
        if (reason == 0) return place;
        if (reason != EEXIST) return fileError(path, "moved to the Trash", reason);
    }
}

void removeFromTrash(const std::filesystem::path& trashed)
{
    ::unlink(trashed.c_str());
    ::unlink(trashInfoOf(trashed).c_str());
}

Result<Done, NotTakenBack> takeFromTrash(const std::filesystem::path& trashed,
                                         const std::filesystem::path& path)
{
    if (const int reason = renameToFreeName(trashed, path); reason != 0)
        return NotTakenBack{reason == EEXIST,
                            fileError(path, "taken back from the Trash", reason).description};
    ::unlink(trashInfoOf(trashed).c_str());
    return Done{};
}

} // namespace lumora
