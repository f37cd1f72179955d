// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the program knows of an image format without any codec stands in one row of one table: what it is
// called, how its bytes begin, who writes it, and what it can hold. A type is decided by content only; the
// extensions say which names are worth a look. Every format of the table is read. Constants and pure
// functions; thread-safe.
#pragma once

#include "types/storage_limits.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// An external program writes whole files of its own.
enum class WrittenBy { nobody, codec, externalEncoder };

struct Format
{
    std::string_view identifier;                  // "public.jpeg"
    std::string_view preferredExtension;          // lower case, without the dot
    std::span<const std::string_view> extensions; // of the files that are taken in, lower case; may be empty
    std::span<const std::string_view> mimeTypes;  // the registered name first
    bool (*begins)(std::string_view head);        // whether a file with these first bytes is of this format
    // The format that a file is of by a deeper look than at its first bytes; null when that knows no better.
    // May be null.
    const Format* (*lookedInto)(int descriptor) = nullptr;
    WrittenBy writtenBy = WrittenBy::nobody;
    StorageLimits limits = {}; // when written
};

// The rows that are asked for by name.
extern const Format jpegFormat;
extern const Format pngFormat;
extern const Format gifFormat;
extern const Format tiffFormat;
extern const Format bmpFormat;
extern const Format heicFormat;
extern const Format heifFormat;
extern const Format avifFormat;
extern const Format webpFormat;

// Pictures above this many pixels count as unreadable.
inline constexpr std::int64_t maximumDecodedPixels = 300'000'000;

// In the order in which types are looked for.
std::span<const Format* const> formats();

// Null when the identifier is unknown.
const Format* formatWithIdentifier(std::string_view identifier);

// The types that codecs write, an external encoder's not among them.
std::vector<std::string> writableTypeIdentifiers();

// The format of a file that begins with these bytes; null for anything that is not read. `sniffLength` bytes
// are enough, fewer are allowed.
const Format* formatOfContent(std::span<const std::byte> head);
inline constexpr std::size_t sniffLength = 64;
// The same for a file, by more than its first bytes where these are a mere claim; null also for one that
// cannot be read.
const Format* formatOfFile(int descriptor);
const Format* formatOfFile(const std::filesystem::path& path);

} // namespace lumora
