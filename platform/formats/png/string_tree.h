// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The strings that began within the last 32 KB, in binary search trees: one for each hash of a string's first
// four bytes, with the latest string at the root and none below an earlier one. The way down to where a
// string belongs meets those that it has most in common with (the search tree of Lempel-Ziv coders with
// optimal parsing). One thread.
#pragma once

#include "png/deflate_code.h"

#include <bit>
#include <cstring>
#include <memory>

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

class StringTree
{
public:
    StringTree();

    // Farther down nothing is looked for, and what is there is forgotten.
    static constexpr int mostSteps = 24;
    using Matches = std::array<Match, mostSteps>;

    // Adds the string at `position`, behind all that were added before, of which `most` bytes count: at least
    // 4, at most 258, and all that are left where those are fewer. Returns how many matches it found, each
    // longer and farther than the one before.
    std::size_t add(const std::uint8_t* data, std::size_t position, std::size_t most, Matches& found);
    void add(const std::uint8_t* data, std::size_t position, std::size_t most);

private:
    template <typename Report>
    void insert(const std::uint8_t* data, std::size_t position, std::size_t most, const Report& report);

    std::unique_ptr<std::int32_t[]> m_roots;
    std::unique_ptr<std::int32_t[]> m_children; // two of each string: what is less and what is greater
};

} // namespace lumora
