// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "trash_folder.h"

#include "system/paths.h"
#include "system/regular_file.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <unistd.h>

namespace lumora {
namespace {

// The highest folder of the file system in which the file is, or was.
std::filesystem::path topFolderOf(const std::filesystem::path& file)
{
    std::filesystem::path top = standardized(file).parent_path();
    while (!fileStamp(top) && top.has_relative_path())
        top = top.parent_path();
    const auto own = fileStamp(top);
    while (own && top.has_relative_path()) {
        const auto above = fileStamp(top.parent_path());
        if (!above || above->device != own->device) break;
        top = top.parent_path();
    }
    return top;
}

} // namespace

std::filesystem::path homeTrash()
{
    const char* const data = std::getenv("XDG_DATA_HOME");
    if (data && *data == '/') return std::filesystem::path(data) / "Trash";
    const char* const home = std::getenv("HOME");
    return std::filesystem::path(home ? home : "/") / ".local" / "share" / "Trash";
}

std::vector<TrashFolder> trashFoldersFor(const std::filesystem::path& file)
{
    const std::filesystem::path top = topFolderOf(file);
    const std::string user = std::to_string(::getuid());
    return {{homeTrash(), "/"}, {top / ".Trash" / user, top}, {top / (".Trash-" + user), top}};
}

std::string trashName(const std::string& name, int number)
{
    if (number == 1) return name;
    const std::size_t dot = std::min(name.find('.'), name.size());
    return name.substr(0, dot) + "." + std::to_string(number) + name.substr(dot);
}

std::filesystem::path trashInfoOf(const std::filesystem::path& trashed)
{
    return trashed.parent_path().parent_path() / "info" / (trashed.filename().native() + ".trashinfo");
}

std::string trashInfo(const std::filesystem::path& origin)
{
    const std::unique_ptr<char, decltype(&g_free)> escaped(
        g_uri_escape_string(standardized(origin).c_str(), "/", FALSE), &g_free);
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::localtime_r(&now, &local);
    std::array<char, 32> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return std::string("[Trash Info]\nPath=") + escaped.get() + "\nDeletionDate=" + date.data() + "\n";
}

} // namespace lumora
