// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A walk through the markers of an open JPEG, whose position stays where it is. Any thread.
#pragma once

#include <cstdint>
#include <optional>

namespace lumora {

namespace JpegCode {
inline constexpr unsigned char startOfImage = 0xD8;
inline constexpr unsigned char endOfImage = 0xD9;
inline constexpr unsigned char startOfScan = 0xDA;
inline constexpr unsigned char firstApplication = 0xE0;
inline constexpr unsigned char lastApplication = 0xEF;
inline constexpr unsigned char remark = 0xFE;
} // namespace JpegCode

struct JpegMarker
{
    unsigned char code; // the second byte of it
    std::uint64_t at;   // of its first byte
    std::uint64_t size; // with the content, as the file claims

    static constexpr std::uint64_t headSize = 4; // before the content: the marker and a length
    std::uint64_t end() const { return at + size; }
};

// The marker at `at` or behind the bytes that fill the place before it; absent where there is none.
std::optional<JpegMarker> jpegMarkerAt(int descriptor, std::uint64_t at);

} // namespace lumora
