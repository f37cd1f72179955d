// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_file_filter.h"

#include "engine/file_input_resolver.h"
#include "platform/file_urls.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace lumora::ImageFileFilter {
namespace {

constexpr std::array<std::string_view, 10> supportedExtensions{"jpg",  "jpeg", "png",  "gif",  "tif",
                                                               "tiff", "bmp",  "heic", "heif", "webp"};

// By hand because the C library's version depends on the locale.
char lowered(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

bool isImage(const std::filesystem::path& url)
{
    std::string extension = pathExtension(url);
    std::ranges::transform(extension, extension.begin(), lowered);
    return std::ranges::find(supportedExtensions, extension) != supportedExtensions.end();
}

bool canContainImages(const std::filesystem::path& url)
{
    return isImage(url) || FileInputResolver::isDirectory(url);
}

} // namespace lumora::ImageFileFilter
