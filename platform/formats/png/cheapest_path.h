// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The steps through some bytes that take the fewest bits. Any thread; throws std::bad_alloc.
#pragma once

#include "png/deflate_code.h"
#include "png/match_lists.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

// What steps take, a code of 15 bits and what is behind it at most. The lowest bits are left for a step's
// length, which comes with its cost so that one comparison chooses both.
constexpr unsigned lengthBits = 9;
constexpr std::uint32_t bitCost = 16U << lengthBits;

struct StepCosts
{
    std::array<std::uint32_t, 256> literals; // with the length 1
    // Of a match, with it. As much more as are read at once.
    std::array<std::uint32_t, longestMatch + 1 + 8> lengths;
    std::array<std::uint32_t, distanceSlots> distances;
};

// The costs that hold for steps that begin before `end`.
struct PricedBytes
{
    std::size_t end;
    StepCosts costs;
};

class PathSearch
{
public:
    // As many lists as bytes, of which the last prices hold for the last; at least one. Returns what the path
    // takes in bits. The steps are there until the next call.
    double find(std::span<const std::uint8_t> bytes, const MatchLists& lists,
                std::span<const PricedBytes> prices);
    std::span<const Step> steps() const { return m_steps; }

private:
    std::vector<std::uint32_t> m_costs;
    std::vector<Step> m_choices;
    std::vector<Step> m_steps;
};

} // namespace lumora
