// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The strings that began within the last 32 KB, in binary search trees: one for each hash of a string's first
// four bytes, with the latest string at the root and none below an earlier one. The way down to where a
// string belongs meets those that it has most in common with (the search tree of Lempel-Ziv coders with
// optimal parsing). One thread.
#pragma once

#include "png/deflate_code.h"

#include <array>
#include <memory>

namespace lumora {

class StringTree
{
public:
    StringTree();

    // Farther down nothing is looked for, and what is there is forgotten.
    static constexpr int mostSteps = 20;
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
