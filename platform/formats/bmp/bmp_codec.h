// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Reading and writing BMP files in memory. Own code because the image library reads this format only through
// a second library with hundreds of codecs, none of which may ever see a user's file. The functions
// are pure and thread-safe.
//
// Read: the headers of OS/2 (12, 16 and 64 bytes) and Windows (40 to 124 bytes); 1, 2, 4 and 8 bits with a
// palette, run-length coded or not; 16, 24 and 32 bits, with colour masks or without; rows in either
// direction. Source of the layout: the BITMAPFILEHEADER to BITMAPV5HEADER structures of the Windows API
// reference.
#pragma once

#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
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

// A picture whose rows are decoded as they are asked for: 8 bits a channel, red, green, blue, and alpha (not
// premultiplied) when the header has it, tightly packed. Data that ends early, runs that leave the picture
// and colours beyond the palette fail: a damaged file never becomes half a picture. Pixels that a run-length
// coding leaves out have the palette's first colour. One thread at a time.
class BmpRows
{
public:
    // Decodes nothing yet. `file` must outlive it.
    static Result<BmpRows> open(std::span<const std::byte> file);
    BmpRows(BmpRows&&) noexcept;
    BmpRows& operator=(BmpRows&&) noexcept;
    ~BmpRows();

    const BmpHeader& header() const;
    std::size_t rowBytes() const;
    // The row `y` from the top, rowBytes() long. Throws std::bad_alloc.
    Status read(std::int64_t y, std::span<std::byte> row);

private:
    struct State;
    explicit BmpRows(std::unique_ptr<State> state);
    std::unique_ptr<State> m_state;
};

// The whole picture, from the top row to the bottom one.
Result<std::vector<std::byte>> decodeBmp(std::span<const std::byte> file);

// Hands over an uncompressed file, piece by piece. Channels: 1 grey (8 bits with a palette), 3 RGB (24 bits),
// 4 RGBA, alpha not premultiplied (32 bits with masks). Rows from top to bottom, tightly packed: width x
// height x channels bytes. At most maximumDecodedPixels. A profile of RGB colours is embedded; empty for
// none. Fails with the taker's error.
using BmpTaker = std::function<Status(std::span<const std::byte> piece)>;
Status encodeBmp(int width, int height, int channels, std::span<const std::byte> rows,
                 std::span<const std::byte> profile, const BmpTaker& take);

} // namespace lumora
