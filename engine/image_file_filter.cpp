// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_file_filter.h"

#include "engine/extension_list.h"
#include "engine/folder_entries.h"

#include <array>
#include <string_view>

namespace lumora::ImageFileFilter {
namespace {

constexpr std::array<std::string_view, 10> supportedExtensions{"jpg",  "jpeg", "png",  "gif",  "tif",
                                                               "tiff", "bmp",  "heic", "heif", "webp"};

} // namespace

bool isImage(const std::filesystem::path& path)
{
    return hasExtension(path, supportedExtensions);
}

bool canContainImages(const std::filesystem::path& path)
{
    return isImage(path) || isFolder(path);
}

} // namespace lumora::ImageFileFilter
