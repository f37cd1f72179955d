// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/package_folders.h"

#include "engine/extension_list.h"
#include "system/file_services.h"

#include <algorithm>
#include <array>

namespace lumora {
namespace {

// What a folder of one kind is called and what lies in every one of them, any of it.
struct Kind
{
    std::array<std::string_view, 10> extensions;
    std::array<std::string_view, 5> marks;
};

constexpr std::array<Kind, 2> kinds{{
    {{"app", "appex", "bundle", "dsym", "framework", "kext", "plugin", "prefpane", "saver", "xpc"},
     {"Contents/Info.plist", "Info.plist", "Resources/Info.plist", "Versions/Current/Resources/Info.plist"}},
    {{"photoslibrary", "photolibrary", "aplibrary", "migratedphotolibrary", "imovielibrary", "fcpbundle"},
     {"database/Photos.sqlite", "database/photos.db", "Database/apdb/Library.apdb",
      "CurrentVersion.imovielibrary", "CurrentVersion.flexolibrary"}},
}};

} // namespace

bool isPackage(const std::filesystem::path& folder)
{
    return std::ranges::any_of(kinds, [&](const Kind& kind) {
        return hasExtension(folder, kind.extensions) &&
               std::ranges::any_of(kind.marks, [&](std::string_view mark) {
                   return !mark.empty() && fileExists(folder / mark);
               });
    });
}

} // namespace lumora
