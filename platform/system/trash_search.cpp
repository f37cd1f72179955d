// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/trash_search.h"

#include "system/file_uris.h"
#include "system/paths.h"

#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace lumora {
namespace {

namespace fs = std::filesystem;

// One folder of the Trash, and what relative paths in it are relative to.
struct TrashFolder
{
    fs::path folder;
    fs::path top;
};

fs::path homeTrash()
{
    const char* const data = std::getenv("XDG_DATA_HOME");
    if (data && *data == '/') return fs::path(data) / "Trash";
    const char* const home = std::getenv("HOME");
    return fs::path(home ? home : "/") / ".local" / "share" / "Trash";
}

// The top of the volume that a path lies on, or lay on.
fs::path volumeOf(fs::path path)
{
    struct stat status = {};
    while (::lstat(path.c_str(), &status) != 0 && path != path.root_path())
        path = path.parent_path();
    const dev_t device = status.st_dev;
    while (path != path.root_path()) {
        if (::lstat(path.parent_path().c_str(), &status) != 0 || status.st_dev != device) break;
        path = path.parent_path();
    }
    return path;
}

std::vector<TrashFolder> foldersFor(const fs::path& path)
{
    const fs::path top = volumeOf(path);
    const std::string user = std::to_string(::getuid());
    return {{homeTrash(), "/"}, {top / ".Trash" / user, top}, {top / (".Trash-" + user), top}};
}

struct Entry
{
    fs::path path; // where it was
    std::string deletionDate;
};

std::optional<Entry> readEntry(const fs::path& note, const fs::path& top)
{
    constexpr std::string_view pathKey = "Path=";
    constexpr std::string_view dateKey = "DeletionDate=";
    Entry entry;
    std::ifstream file(note);
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(dateKey)) entry.deletionDate = line.substr(dateKey.size());
        if (!line.starts_with(pathKey)) continue;
        // Escaped as in a URI, and relative on volumes other than that of the user's own folder.
        const std::string value = line.substr(pathKey.size());
        const bool isAbsolute = value.starts_with('/');
        const auto decoded = pathFromFileUri((isAbsolute ? "file:" : "file:/") + value);
        if (!decoded) return std::nullopt;
        entry.path = isAbsolute ? *decoded : top / decoded->relative_path();
    }
    return entry;
}

} // namespace

std::optional<fs::path> findInTrash(const fs::path& path)
{
    const fs::path wanted = standardized(path);
    std::optional<fs::path> found;
    std::string latest;
    for (const auto& [folder, top] : foldersFor(wanted)) {
        std::error_code error;
        for (fs::directory_iterator notes(folder / "info", error), end; !error && notes != end;
             notes.increment(error)) {
            const fs::path& note = notes->path();
            if (note.extension() != ".trashinfo") continue;
            const auto entry = readEntry(note, top);
            if (!entry || standardized(entry->path) != wanted || entry->deletionDate < latest) continue;
            const fs::path file = folder / "files" / note.stem();
            std::error_code unknown;
            if (!fs::is_regular_file(file, unknown)) continue;
            latest = entry->deletionDate;
            found = file;
        }
    }
    return found;
}

} // namespace lumora
