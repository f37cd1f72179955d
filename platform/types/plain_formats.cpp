// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the formats that their first bytes tell for certain.
#include "types/format.h"

#include <algorithm>
#include <array>

namespace lumora {
namespace {

using namespace std::string_view_literals;

bool beginsJpeg(std::string_view head)
{
    return head.starts_with("\xFF\xD8\xFF"sv);
}

bool beginsPng(std::string_view head)
{
    return head.starts_with("\x89PNG\r\n\x1A\n"sv);
}

bool beginsGif(std::string_view head)
{
    return head.starts_with("GIF87a"sv) || head.starts_with("GIF89a"sv);
}

bool beginsTiff(std::string_view head)
{
    return std::ranges::any_of(std::array{"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv},
                               [head](std::string_view magic) { return head.starts_with(magic); });
}

// Two letters alone would claim any text that begins so: the header's reserved zeros and its length must fit.
bool beginsBmp(std::string_view head)
{
    return head.size() >= 18 && head.starts_with("BM"sv) && head.substr(6, 4) == "\0\0\0\0"sv &&
           head.substr(15, 3) == "\0\0\0"sv;
}

bool beginsWebp(std::string_view head)
{
    return head.size() >= 12 && head.starts_with("RIFF"sv) && head.substr(8, 4) == "WEBP"sv;
}

constexpr std::array jpegExtensions{"jpg"sv, "jpeg"sv};
constexpr std::array pngExtensions{"png"sv};
constexpr std::array gifExtensions{"gif"sv};
constexpr std::array tiffExtensions{"tif"sv, "tiff"sv};
constexpr std::array bmpExtensions{"bmp"sv};
constexpr std::array webpExtensions{"webp"sv};

constexpr std::array jpegMimeTypes{"image/jpeg"sv};
constexpr std::array pngMimeTypes{"image/png"sv};
constexpr std::array gifMimeTypes{"image/gif"sv};
constexpr std::array tiffMimeTypes{"image/tiff"sv};
constexpr std::array bmpMimeTypes{"image/bmp"sv, "image/x-ms-bmp"sv};
constexpr std::array webpMimeTypes{"image/webp"sv};

} // namespace

constinit const Format jpegFormat{
    .identifier = "public.jpeg",
    .preferredExtension = "jpeg",
    .extensions = jpegExtensions,
    .mimeTypes = jpegMimeTypes,
    .begins = beginsJpeg,
    .writtenBy = WrittenBy::codec,
    .limits = {.holdsGray = true, .holdsInk = true, .profiles = ProfileStorage::any, .longestEdge = 65500}};

constinit const Format pngFormat{
    .identifier = "public.png",
    .preferredExtension = "png",
    .extensions = pngExtensions,
    .mimeTypes = pngMimeTypes,
    .begins = beginsPng,
    .writtenBy = WrittenBy::codec,
    .limits = {
        .holdsSixteenBits = true, .holdsGray = true, .holdsAlpha = true, .profiles = ProfileStorage::any}};

constinit const Format gifFormat{.identifier = "com.compuserve.gif",
                                 .preferredExtension = "gif",
                                 .extensions = gifExtensions,
                                 .mimeTypes = gifMimeTypes,
                                 .begins = beginsGif,
                                 .writtenBy = WrittenBy::codec,
                                 .limits = {.holdsGray = true, .holdsAlpha = true, .longestEdge = 65535}};

constinit const Format tiffFormat{.identifier = "public.tiff",
                                  .preferredExtension = "tiff",
                                  .extensions = tiffExtensions,
                                  .mimeTypes = tiffMimeTypes,
                                  .begins = beginsTiff,
                                  .writtenBy = WrittenBy::codec,
                                  .limits = {.holdsSixteenBits = true,
                                             .holdsGray = true,
                                             .holdsInk = true,
                                             .holdsAlpha = true,
                                             .holdsAnyModel = true,
                                             .profiles = ProfileStorage::any}};

constinit const Format bmpFormat{
    .identifier = "com.microsoft.bmp",
    .preferredExtension = "bmp",
    .extensions = bmpExtensions,
    .mimeTypes = bmpMimeTypes,
    .begins = beginsBmp,
    .writtenBy = WrittenBy::codec,
    .limits = {.holdsGray = true, .holdsAlpha = true, .profiles = ProfileStorage::rgbOnly}};

// The limit is that of the encoder's road by a PPM file. Its words about a longer edge tell more than ours
// would.
constinit const Format webpFormat{.identifier = "org.webmproject.webp",
                                  .preferredExtension = "webp",
                                  .extensions = webpExtensions,
                                  .mimeTypes = webpMimeTypes,
                                  .begins = beginsWebp,
                                  .writtenBy = WrittenBy::externalEncoder,
                                  .limits = {.longestEdge = 16383}};

} // namespace lumora
