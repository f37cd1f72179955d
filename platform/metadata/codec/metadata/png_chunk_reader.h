// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A walk through the chunks of an open PNG file without reading what they hold. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace lumora {

struct PngChunk
{
    std::string type; // four letters
    std::size_t dataAt;
    std::size_t length; // of the data, as the file claims

    std::size_t typeAt() const; // the place of the letters
    std::size_t end() const;    // past the checksum
};

// The chunk that begins at `at`; absent where the file ends.
std::optional<PngChunk> pngChunkAt(int descriptor, std::size_t at);

// The place of the first one.
inline constexpr std::size_t firstPngChunk = 8;

// Whether every chunk before the picture's data lies within the file. The image library believes their
// lengths and sets aside gigabytes for a file of a few bytes.
bool hasSoundPngHead(int descriptor);

} // namespace lumora
