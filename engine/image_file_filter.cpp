// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_file_filter.h"

#include "engine/extension_list.h"
#include "engine/folder_entries.h"
#include "types/format.h"

#include <algorithm>

namespace lumora::ImageFileFilter {
bool isImage(const std::filesystem::path& path)
{
    return std::ranges::any_of(
        formats(), [&path](const Format* format) { return hasExtension(path, format->extensions); });
}

bool canContainImages(const std::filesystem::path& path)
{
    return isImage(path) || isFolder(path);
}

} // namespace lumora::ImageFileFilter
