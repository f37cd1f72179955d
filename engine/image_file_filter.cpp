// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_file_filter.h"

#include "engine/extension_list.h"
#include "engine/file_input_resolver.h"

#include <array>
#include <string_view>

namespace lumora::ImageFileFilter {
namespace {

constexpr std::array<std::string_view, 10> supportedExtensions{"jpg",  "jpeg", "png",  "gif",  "tif",
                                                               "tiff", "bmp",  "heic", "heif", "webp"};

} // namespace

bool isImage(const std::filesystem::path& url)
{
    return hasExtension(url, supportedExtensions);
}

bool canContainImages(const std::filesystem::path& url)
{
    return isImage(url) || FileInputResolver::isDirectory(url);
}

} // namespace lumora::ImageFileFilter
