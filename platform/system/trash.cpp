// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/trash.h"

#include <gio/gio.h>

#include <memory>
#include <string>

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

} // namespace

Status moveToTrash(const std::filesystem::path& path)
{
    const std::unique_ptr<GFile, Unreference> file(g_file_new_for_path(path.c_str()));
    GError* error = nullptr;
    if (!g_file_trash(file.get(), nullptr, &error)) return trashError(path, error);
    return Done{};
}

} // namespace lumora
