// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/interleaving.h"

#include "pixels/vector_clones.h"

#include <array>
#include <bit>
#include <cstring>

namespace lumora {

LUMORA_VECTOR_CLONES void interleave3(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c,
                                      std::ptrdiff_t pixels, std::uint8_t* __restrict interleaved)
{
    for (std::ptrdiff_t i = 0; i < pixels; ++i) {
        interleaved[3 * i] = a[i];
        interleaved[3 * i + 1] = b[i];
        interleaved[3 * i + 2] = c[i];
    }
}

LUMORA_VECTOR_CLONES void deinterleave3(const std::uint8_t* interleaved, std::ptrdiff_t pixels,
                                        std::uint8_t* __restrict a, std::uint8_t* __restrict b,
                                        std::uint8_t* __restrict c)
{
    for (std::ptrdiff_t i = 0; i < pixels; ++i) {
        a[i] = interleaved[3 * i];
        b[i] = interleaved[3 * i + 1];
        c[i] = interleaved[3 * i + 2];
    }
}

// Four bytes at once, of which the next pixel overwrites the last.
void dropFourth(const std::uint8_t* four, std::ptrdiff_t pixels, std::uint8_t* three)
{
    if (pixels == 0) return;
    for (std::ptrdiff_t i = 0; i < pixels - 1; ++i)
        std::memcpy(three + 3 * i, four + 4 * i, 4);
    std::memcpy(three + 3 * (pixels - 1), four + 4 * (pixels - 1), 3);
}

// One wide load and store a pixel, but for the last, behind which nothing may be read.
void addFourth(const std::uint8_t* three, std::ptrdiff_t pixels, std::uint8_t* four)
{
    constexpr std::array<std::uint8_t, 4> fullBytes{0, 0, 0, 255};
    const auto full = std::bit_cast<std::uint32_t>(fullBytes);
    for (; pixels > 1; --pixels, three += 3, four += 4) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, three, 4);
        pixel |= full;
        std::memcpy(four, &pixel, 4);
    }
    if (pixels == 1) {
        std::memcpy(four, three, 3);
        four[3] = 255;
    }
}

} // namespace lumora
