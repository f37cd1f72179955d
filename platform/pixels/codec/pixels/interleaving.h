// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Components of a byte each, apart and pixel by pixel. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>

namespace lumora {

void interleave3(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c, std::ptrdiff_t pixels,
                 std::uint8_t* interleaved);
void deinterleave3(const std::uint8_t* interleaved, std::ptrdiff_t pixels, std::uint8_t* a, std::uint8_t* b,
                   std::uint8_t* c);

// Three of the four components of each pixel, and a fourth of 255 for each pixel of three.
void dropFourth(const std::uint8_t* four, std::ptrdiff_t pixels, std::uint8_t* three);
void addFourth(const std::uint8_t* three, std::ptrdiff_t pixels, std::uint8_t* four);

} // namespace lumora
