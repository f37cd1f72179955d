// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers in bytes, the lowest byte first. The caller has checked that the bytes are there.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

template <class Unsigned>
Unsigned littleEndianAt(std::span<const std::byte> bytes, std::size_t at)
{
    std::uint64_t value = 0;
    for (std::size_t i = sizeof(Unsigned); i-- > 0;) {
        value = (value << 8U) | std::to_integer<std::uint64_t>(bytes[at + i]);
    }
    return static_cast<Unsigned>(value);
}

template <class Unsigned>
void appendLittleEndian(std::vector<std::byte>& bytes, Unsigned value)
{
    for (std::size_t i = 0; i < sizeof(Unsigned); ++i) {
        bytes.push_back(static_cast<std::byte>((std::uint64_t{value} >> (8 * i)) & 0xFFU));
    }
}

} // namespace lumora
