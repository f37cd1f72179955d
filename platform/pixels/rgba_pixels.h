// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Operations on pixels of 8-bit components, and the memory of bitmaps. Stateless; thread-safe.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace lumora {

// Colours times alpha, rounded, for `count` interleaved pixels of `bands` components, the last of which is
// alpha; and back (a transparent pixel becomes black).
void premultiply(std::uint8_t* pixels, std::size_t count, int bands);
void unpremultiply(std::uint8_t* pixels, std::size_t count, int bands);

struct UnmapBytes
{
    std::size_t bytes = 0;

    void operator()(std::uint8_t* memory) const;
};

// Room for one picture, zeroed. Pages of their own, which go back to the system at once: bitmaps of ever
// other sizes on the heap would leave gaps there that grow with the number of files. Throws std::bad_alloc.
using PageBytes = std::unique_ptr<std::uint8_t[], UnmapBytes>;
PageBytes allocatePages(std::size_t bytes);

} // namespace lumora
