// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The table of image types: what each is called, how its bytes begin, and whether Lumora reads and writes it.
// A type is decided by content only. Constants and pure functions; thread-safe.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace lumora {

struct ImageType
{
    std::string_view identifier;
    std::string_view preferredExtension; // without the dot
    bool readable;
    bool writable;
};

std::span<const ImageType> imageTypes();

// Null when the identifier is unknown.
const ImageType* imageTypeWithIdentifier(std::string_view identifier);

// The type whose files begin with these bytes; null for anything that Lumora does not read. 64 bytes are
// enough, fewer are allowed.
const ImageType* sniffImageType(std::span<const std::byte> head);
inline constexpr std::size_t sniffLength = 64;

} // namespace lumora
