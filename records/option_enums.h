// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The three choices of a batch that are stored and shown by name. An enum's raw value is what the preferences
// file and the command line hold; its title is what the interface shows. Thread-safe: constants and pure
// functions.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumora {

// No resizing stands last because the first case is the default.
enum class ResizeMode : std::uint8_t { maxWidth, maxHeight, longestEdge, none };

enum class OutputFormat : std::uint8_t { webp, webpLossless, jpeg, png, heic, original };

enum class DestinationMode : std::uint8_t { originalLocation, selectedFolder };

// Every case of an enum in declaration order, the order in which pickers list them.
template <class Enum>
inline constexpr auto allCases = std::array<Enum, 0>{};
template <>
inline constexpr auto allCases<ResizeMode> =
    std::array{ResizeMode::maxWidth, ResizeMode::maxHeight, ResizeMode::longestEdge, ResizeMode::none};
template <>
inline constexpr auto allCases<OutputFormat> =
    std::array{OutputFormat::webp, OutputFormat::webpLossless, OutputFormat::jpeg,
               OutputFormat::png,  OutputFormat::heic,         OutputFormat::original};
template <>
inline constexpr auto allCases<DestinationMode> =
    std::array{DestinationMode::originalLocation, DestinationMode::selectedFolder};

std::string_view rawValue(ResizeMode mode);
std::string_view rawValue(OutputFormat format);
std::string_view rawValue(DestinationMode mode);

std::string_view title(ResizeMode mode);
std::string_view title(OutputFormat format);
std::string_view title(DestinationMode mode);

// The case whose raw value equals the text exactly (case-sensitive, no trimming).
template <class Enum>
std::optional<Enum> fromRawValue(std::string_view text)
{
    for (Enum value : allCases<Enum>) {
        if (rawValue(value) == text) return value;
    }
    return std::nullopt;
}

// Without a dot; absent for `original`, whose output keeps the extension of the source's type.
std::optional<std::string_view> fileExtension(OutputFormat format);
// The type identifier that the encoder is asked for; absent for `original`.
std::optional<std::string_view> utiIdentifier(OutputFormat format);
// True for the formats that the external WebP encoder writes.
bool isWebP(OutputFormat format);
// True for the formats on which the quality setting has no effect.
bool isLosslessOnly(OutputFormat format);

} // namespace lumora
