// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/interleaving.h"

#include "pixels/vector_clones.h"

namespace lumora {
namespace {

LUMORA_VECTOR_CLONES void join(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c,
                               std::uint8_t* __restrict packed, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        packed[3 * i] = a[i];
        packed[3 * i + 1] = b[i];
        packed[3 * i + 2] = c[i];
    }
}

LUMORA_VECTOR_CLONES void split(const std::uint8_t* packed, std::uint8_t* __restrict a,
                                std::uint8_t* __restrict b, std::uint8_t* __restrict c, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        a[i] = packed[3 * i];
        b[i] = packed[3 * i + 1];
        c[i] = packed[3 * i + 2];
    }
}

} // namespace

void interleave3(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c, std::ptrdiff_t pixels,
                 std::uint8_t* interleaved)
{
    join(a, b, c, interleaved, pixels);
}

void deinterleave3(const std::uint8_t* interleaved, std::ptrdiff_t pixels, std::uint8_t* a, std::uint8_t* b,
                   std::uint8_t* c)
{
    split(interleaved, a, b, c, pixels);
}

} // namespace lumora
