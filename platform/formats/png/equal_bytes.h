// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace lumora {

// How many bytes are equal, of which `known` are known to be.
inline std::size_t equalBytes(const std::uint8_t* a, const std::uint8_t* b, std::size_t known,
                              std::size_t most)
{
    while (known + sizeof(std::uint64_t) <= most) {
        std::uint64_t first = 0;
        std::uint64_t second = 0;
        std::memcpy(&first, a + known, sizeof first);
        std::memcpy(&second, b + known, sizeof second);
        if (first != second) {
            if constexpr (std::endian::native == std::endian::big) break;
            return known + static_cast<std::size_t>(std::countr_zero(first ^ second)) / 8;
        }
        known += sizeof first;
    }
    while (known < most && a[known] == b[known])
        ++known;
    return known;
}

// The same for the bytes before.
inline std::size_t equalBytesBefore(const std::uint8_t* a, const std::uint8_t* b, std::size_t most)
{
    std::size_t equal = 0;
    while (equal < most && *(a - equal - 1) == *(b - equal - 1))
        ++equal;
    return equal;
}

} // namespace lumora
