// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/package_folders.h"

#include "engine/extension_list.h"

#include <array>

namespace lumora {
namespace {

constexpr std::array<std::string_view, 26> packageExtensions{
    "app",       "appex",         "aplibrary",    "band",          "bundle", "dsym",   "fcpbundle",
    "framework", "imovielibrary", "kext",         "key",           "logicx", "mpkg",   "musiclibrary",
    "numbers",   "pages",         "photolibrary", "photoslibrary", "pkg",    "plugin", "prefpane",
    "rtfd",      "saver",         "sparsebundle", "xcodeproj",     "xpc"};

} // namespace

bool isPackage(const std::filesystem::path& folder)
{
    return hasExtension(folder, packageExtensions);
}

} // namespace lumora
