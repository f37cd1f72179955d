// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The alphabet of deflated data (RFC 1951, 3.2.5): single bytes, and repetitions of 3 to 258 bytes that began
// 1 to 32768 bytes before. Lengths and distances come as a slot, which has a code, and some bits behind it.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace lumora {

constexpr std::size_t shortestMatch = 3;
constexpr std::size_t longestMatch = 258;
constexpr std::size_t windowBytes = 32768;

constexpr std::size_t literalSymbols = 257; // all bytes, and the end of a block
constexpr std::size_t endOfBlock = 256;
constexpr std::size_t lengthSlots = 29;
constexpr std::size_t distanceSlots = 30;
constexpr unsigned longestWord = 15; // bits of a word of their codes

struct Match
{
    std::uint16_t length;
    std::uint16_t distance;
};

// What data is made of.
struct Step
{
    std::uint16_t length; // of a match, or 1 for a single byte
    std::uint16_t value;  // the distance, or the byte
};

// Pairs of slots, for lengths fours, have a bit more than those before; the first ones have none.
constexpr auto extraLengthBits = [] {
    std::array<std::uint8_t, lengthSlots> bits{};
    for (std::size_t slot = 8; slot + 1 < lengthSlots; ++slot)
        bits[slot] = static_cast<std::uint8_t>(bits[slot - 4] + 1);
    return bits;
}();

constexpr auto extraDistanceBits = [] {
    std::array<std::uint8_t, distanceSlots> bits{};
    for (std::size_t slot = 4; slot < distanceSlots; ++slot)
        bits[slot] = static_cast<std::uint8_t>(bits[slot - 2] + 1);
    return bits;
}();

template <std::size_t slots>
constexpr std::array<std::size_t, slots> firstOfSlots(std::size_t first,
                                                      const std::array<std::uint8_t, slots>& extraBits)
{
    std::array<std::size_t, slots> firsts{};
    for (std::size_t slot = 0; slot < slots; ++slot) {
        firsts[slot] = first;
        first += std::size_t{1} << extraBits[slot];
    }
    return firsts;
}

constexpr auto firstLength = [] {
    auto firsts = firstOfSlots(shortestMatch, extraLengthBits);
    firsts.back() = longestMatch; // which the slot before could tell as well
    return firsts;
}();
constexpr auto firstDistance = firstOfSlots(1, extraDistanceBits);

constexpr auto slotOfLength = [] {
    std::array<std::uint8_t, longestMatch + 1> slots{};
    for (std::size_t slot = 0; slot < lengthSlots; ++slot) {
        for (std::size_t length = firstLength[slot]; length <= longestMatch; ++length)
            slots[length] = static_cast<std::uint8_t>(slot);
    }
    return slots;
}();

constexpr std::size_t slotOfDistance(std::size_t distance)
{
    if (distance <= 4) return distance - 1;
    const auto top = static_cast<std::size_t>(std::bit_width(distance - 1)) - 1;
    return 2 * top + ((distance - 1) >> (top - 1) & 1U);
}

} // namespace lumora
