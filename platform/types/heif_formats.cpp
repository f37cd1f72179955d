// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One container, three names for what the pictures in it are coded with.
#include "types/format.h"
#include "types/heif_items.h"

#include <algorithm>
#include <array>
#include <string>

namespace lumora {
namespace {

using namespace std::string_view_literals;

// Whether the first box of an ISO media file names one of these brands.
bool hasBrand(std::string_view head, std::span<const std::string_view> brands)
{
    if (head.size() < 16 || !head.starts_with("\0\0"sv) || head.substr(4, 4) != "ftyp"sv) return false;
    const auto boxLength = static_cast<std::size_t>((static_cast<unsigned char>(head[2]) << 8U) +
                                                    static_cast<unsigned char>(head[3]));
    const std::string_view box = head.substr(0, std::min(boxLength, head.size()));
    for (std::size_t at = 8; at + 4 <= box.size(); at += 4) {
        const bool isMinorVersion = at == 12;
        if (!isMinorVersion && std::ranges::find(brands, box.substr(at, 4)) != brands.end()) return true;
    }
    return false;
}

bool beginsAvif(std::string_view head)
{
    return hasBrand(head, std::array{"avif"sv, "avis"sv});
}

bool beginsHeic(std::string_view head)
{
    return hasBrand(head, std::array{"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "hevx"sv});
}

bool beginsHeif(std::string_view head)
{
    return hasBrand(head, std::array{"mif1"sv, "msf1"sv});
}

// The brands only claim what the picture is coded with.
const Format* lookedInto(int descriptor)
{
    const std::string codec = heifItems(descriptor).codec();
    if (codec == "hevc") return &heicFormat;
    return codec == "av1" ? &avifFormat : nullptr;
}

constexpr std::array heicExtensions{"heic"sv};
constexpr std::array heifExtensions{"heif"sv};
constexpr std::array heicMimeTypes{"image/heic"sv};
constexpr std::array heifMimeTypes{"image/heif"sv};
constexpr std::array avifMimeTypes{"image/avif"sv};

} // namespace

// Readers of this container refuse longer edges, our own among them.
constinit const Format heicFormat{
    .identifier = "public.heic",
    .preferredExtension = "heic",
    .extensions = heicExtensions,
    .mimeTypes = heicMimeTypes,
    .begins = beginsHeic,
    .lookedInto = lookedInto,
    .writtenBy = WrittenBy::codec,
    .limits = {.holdsAlpha = true, .profiles = ProfileStorage::any, .longestEdge = 16384}};

constinit const Format heifFormat{.identifier = "public.heif",
                                  .preferredExtension = "heif",
                                  .extensions = heifExtensions,
                                  .mimeTypes = heifMimeTypes,
                                  .begins = beginsHeif,
                                  .lookedInto = lookedInto};

constinit const Format avifFormat{.identifier = "public.avif",
                                  .preferredExtension = "avif",
                                  .extensions = {},
                                  .mimeTypes = avifMimeTypes,
                                  .begins = beginsAvif,
                                  .lookedInto = lookedInto};

} // namespace lumora
