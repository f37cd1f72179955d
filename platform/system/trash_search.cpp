// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/trash_search.h"

#include "system/file_uris.h"
#include "system/paths.h"
#include "trash_folder.h"

#include <fstream>
#include <string>
#include <string_view>

namespace lumora {
namespace {

namespace fs = std::filesystem;

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
    return TrashContents().find(path);
}

std::optional<fs::path> TrashContents::find(const fs::path& path)
{
    const fs::path wanted = standardized(path);
    std::optional<fs::path> found;
    std::string latest;
    for (const auto& [folder, top] : trashFoldersFor(wanted)) {
        const auto [first, last] = readOnce(folder, top).equal_range(wanted.native());
        for (auto thrown = first; thrown != last; ++thrown) {
            const auto& [deletionDate, file] = thrown->second;
            std::error_code unknown;
            if (deletionDate < latest || !fs::is_regular_file(file, unknown)) continue;
            latest = deletionDate;
            found = file;
        }
    }
    return found;
}

const TrashContents::ByPath& TrashContents::readOnce(const fs::path& folder, const fs::path& top)
{
    const auto [known, isNew] = m_folders.try_emplace(folder);
    if (!isNew) return known->second;
    std::error_code error;
    for (fs::directory_iterator notes(folder / "info", error), end; !error && notes != end;
         notes.increment(error)) {
        const fs::path& note = notes->path();
        if (note.extension() != ".trashinfo") continue;
        const auto entry = readEntry(note, top);
        if (!entry) continue;
        known->second.emplace(standardized(entry->path).native(),
                              Thrown{entry->deletionDate, folder / "files" / note.stem()});
    }
    return known->second;
}

} // namespace lumora
