// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/format.h"

#include <algorithm>
#include <array>
#include <string>

namespace lumora {
namespace {

constexpr std::array<ImageType, 9> types{{
    {"public.jpeg", "jpeg", true, true},
    {"public.png", "png", true, true},
    {"com.compuserve.gif", "gif", true, true},
    {"public.tiff", "tiff", true, true},
    {"com.microsoft.bmp", "bmp", true, true},
    {"public.heic", "heic", true, true},
    {"public.heif", "heif", true, false},
    {"public.avif", "avif", true, false},
    {"org.webmproject.webp", "webp", true, false},
}};

using namespace std::string_view_literals;

// The brands of an ISO media file's first box decide between HEVC-coded, AV1-coded and other HEIF.
std::string_view heifIdentifier(std::string_view head)
{
    const auto boxLength = static_cast<std::size_t>((static_cast<unsigned char>(head[2]) << 8U) +
                                                    static_cast<unsigned char>(head[3]));
    const std::string_view box = head.substr(0, std::min(boxLength, head.size()));
    const auto hasBrand = [&](std::string_view brand) {
        for (std::size_t at = 8; at + 4 <= box.size(); at += 4) {
            if (at != 12 && box.substr(at, 4) == brand) return true; // 12: the minor version, not a brand
        }
        return false;
    };
    for (const auto brand : {"avif"sv, "avis"sv}) {
        if (hasBrand(brand)) return "public.avif";
    }
    for (const auto brand : {"heic"sv, "heix"sv, "heim"sv, "heis"sv, "hevc"sv, "hevx"sv}) {
        if (hasBrand(brand)) return "public.heic";
    }
    for (const auto brand : {"mif1"sv, "msf1"sv}) {
        if (hasBrand(brand)) return "public.heif";
    }
    return {};
}

std::string_view identifierOf(std::string_view head)
{
    if (head.starts_with("\xFF\xD8\xFF"sv)) return "public.jpeg";
    if (head.starts_with("\x89PNG\r\n\x1A\n"sv)) return "public.png";
    if (head.starts_with("GIF87a"sv) || head.starts_with("GIF89a"sv)) return "com.compuserve.gif";
    for (const auto magic : {"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv}) {
        if (head.starts_with(magic)) return "public.tiff";
    }
    if (head.size() >= 12 && head.starts_with("RIFF"sv) && head.substr(8, 4) == "WEBP"sv)
        return "org.webmproject.webp";
    if (head.size() >= 16 && head.starts_with("\0\0"sv) && head.substr(4, 4) == "ftyp"sv)
        return heifIdentifier(head);
    // Two letters alone would claim any text that begins so: the header's reserved zeros and its length must
    // fit.
    if (head.size() >= 18 && head.starts_with("BM"sv) && head.substr(6, 4) == "\0\0\0\0"sv &&
        head.substr(15, 3) == "\0\0\0"sv) {
        return "com.microsoft.bmp";
    }
    return {};
}

} // namespace

std::span<const ImageType> imageTypes()
{
    return types;
}

const ImageType* imageTypeWithIdentifier(std::string_view identifier)
{
    const auto found = std::ranges::find(types, identifier, &ImageType::identifier);
    return found == types.end() ? nullptr : &*found;
}

const ImageType* sniffImageType(std::span<const std::byte> head)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    const std::string_view text(reinterpret_cast<const char*>(head.data()), head.size());
    return imageTypeWithIdentifier(identifierOf(text));
}

} // namespace lumora
