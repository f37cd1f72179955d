// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing BMP files in memory. Own code because the image library reads this format only through
// a second library with hundreds of codecs, none of which may ever see a user's file. Pure functions;
// thread-safe.
//
// Read: the headers of OS/2 (12, 16 and 64 bytes) and Windows (40 to 124 bytes); 1, 2, 4 and 8 bits with a
// palette, run-length coded or not; 16, 24 and 32 bits, with colour masks or without; rows in either
// direction. Source of the layout: the BITMAPFILEHEADER to BITMAPV5HEADER structures of the Windows API
// reference.
#pragma once

#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

struct BmpHeader
{
    std::int64_t width;
    std::int64_t height;
    int bitsPerPixel;                      // as stored
    bool hasAlpha;                         // a mask for alpha is given; without one 32 bits are opaque
    std::span<const std::byte> iccProfile; // within the given bytes; empty when none is embedded

    int channels() const { return hasAlpha ? 4 : 3; }
};

// Fails on anything that is not a BMP of a readable kind, on a damaged header, and above
// maximumDecodedPixels.
Result<BmpHeader> readBmpHeader(std::span<const std::byte> file);

// The picture from the top row to the bottom one, rows packed tightly, 8 bits a channel: red, green, blue,
// and alpha (not premultiplied) when the header has it. Data that ends early, runs that leave the picture and
// colours beyond the palette fail: a damaged file never becomes half a picture. Pixels that a run-length
// coding leaves out have the palette's first colour.
Result<std::vector<std::byte>> decodeBmp(std::span<const std::byte> file);

// An uncompressed file. Channels: 1 grey (8 bits with a palette), 3 RGB (24 bits), 4 RGBA, alpha not
// premultiplied (32 bits with masks). Rows from top to bottom, tightly packed: width x height x channels
// bytes. At most maximumDecodedPixels.
std::vector<std::byte> encodeBmp(int width, int height, int channels, std::span<const std::byte> rows);

} // namespace lumora
