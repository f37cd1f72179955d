// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/option_enums.h"

#include <cstddef>

namespace lumora {
namespace {

struct Names
{
    std::string_view rawValue;
    std::string_view title;
};

constexpr std::array<Names, 4> resizeModeNames{{
    {"maxWidth", "Max Width"},
    {"maxHeight", "Max Height"},
    {"longestEdge", "Longest Edge"},
    {"none", "No Resize"},
}};

constexpr std::array<Names, 2> destinationModeNames{{
    {"originalLocation", "Original Location"},
    {"selectedFolder", "Selected Folder"},
}};

struct FormatTraits
{
    Names names;
    std::optional<std::string_view> fileExtension;
    std::optional<std::string_view> utiIdentifier;
    bool isWebP;
    bool isLosslessOnly;
};

constexpr std::array<FormatTraits, 6> formats{{
    {{"webp", "WebP Lossy"}, "webp", "org.webmproject.webp", true, false},
    {{"webpLossless", "WebP Lossless"}, "webp", "org.webmproject.webp", true, true},
    {{"jpeg", "JPEG"}, "jpg", "public.jpeg", false, false},
    {{"png", "PNG"}, "png", "public.png", false, true},
    {{"heic", "HEIC"}, "heic", "public.heic", false, false},
    {{"original", "Original Format"}, std::nullopt, std::nullopt, false, false},
}};

template <class Table, class Enum>
const auto& rowOf(const Table& table, Enum value)
{
    return table.at(static_cast<std::size_t>(value));
}

} // namespace

std::string_view rawValue(ResizeMode mode)
{
    return rowOf(resizeModeNames, mode).rawValue;
}
std::string_view rawValue(OutputFormat format)
{
    return rowOf(formats, format).names.rawValue;
}
std::string_view rawValue(DestinationMode mode)
{
    return rowOf(destinationModeNames, mode).rawValue;
}

std::string_view title(ResizeMode mode)
{
    return rowOf(resizeModeNames, mode).title;
}
std::string_view title(OutputFormat format)
{
    return rowOf(formats, format).names.title;
}
std::string_view title(DestinationMode mode)
{
    return rowOf(destinationModeNames, mode).title;
}

std::optional<std::string_view> fileExtension(OutputFormat format)
{
    return rowOf(formats, format).fileExtension;
}
std::optional<std::string_view> utiIdentifier(OutputFormat format)
{
    return rowOf(formats, format).utiIdentifier;
}
bool isWebP(OutputFormat format)
{
    return rowOf(formats, format).isWebP;
}
bool isLosslessOnly(OutputFormat format)
{
    return rowOf(formats, format).isLosslessOnly;
}

} // namespace lumora
