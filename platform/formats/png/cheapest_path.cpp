// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/cheapest_path.h"

#include "pixels/vector_clones.h"

#include <algorithm>
#include <cstring>

namespace lumora {
namespace {

constexpr std::size_t atOnce = 8;
using Lanes = std::int32_t __attribute__((vector_size(atOnce * sizeof(std::int32_t))));
using Sums = std::uint32_t __attribute__((vector_size(atOnce * sizeof(std::uint32_t))));

constexpr std::uint32_t lengthMask = (1U << lengthBits) - 1;
// More than what costs within the reach of a step differ by. They are counted from the end and grow beyond
// what an integer holds, but differences are right.
constexpr std::uint32_t room = 1U << 28U;
constexpr std::int32_t never = 0x7FFFFFFF;

// What the cheapest step takes with all that follows it, less `base`, and its length. `costs` are those of
// what follows each of the bytes that come, the step's own first.
std::int32_t cheapest(std::int32_t literal, std::span<const Match> matches, const StepCosts& step,
                      const std::uint32_t* costs, std::uint32_t base)
{
    constexpr Lanes numbers{0, 1, 2, 3, 4, 5, 6, 7};
    Lanes least = numbers * 0 + literal;
    std::size_t length = shortestMatch;
    for (const Match& match : matches) {
        const std::uint32_t distance = step.distances[slotOfDistance(match.distance)] - base;
        for (; length <= match.length; length += atOnce) {
            Sums after;
            Sums own;
            std::memcpy(&after, costs + length, sizeof after);
            std::memcpy(&own, step.lengths.data() + length, sizeof own);
            after += own + distance;
            Lanes sums; // as they are compared; none is above half of what an integer holds
            std::memcpy(&sums, &after, sizeof sums);
            const Lanes tooLong = numbers > static_cast<std::int32_t>(match.length - length);
            const Lanes possible = (sums & ~tooLong) | (tooLong & never);
            least = possible < least ? possible : least;
        }
        length = match.length + std::size_t{1};
    }
    std::int32_t result = least[0];
    for (std::size_t i = 1; i < atOnce; ++i)
        result = std::min(result, least[i]);
    return result;
}

// The costs are those from this byte on, of which the first is found.
void chooseStep(std::uint8_t byte, std::span<const Match> matches, const StepCosts& step,
                std::uint32_t* costs, std::uint32_t base, Step& choice)
{
    const auto literal = static_cast<std::int32_t>(step.literals[byte] + costs[1] - base);
    const auto best = static_cast<std::uint32_t>(cheapest(literal, matches, step, costs, base));
    const auto length = static_cast<std::uint16_t>(best & lengthMask);
    choice = {length, byte};
    if (length > 1) {
        const Match* match = matches.data();
        while (match->length < length)
            ++match;
        choice.value = match->distance;
    }
    costs[0] = best - length + base;
}

// Each match is taken whole or not at all.
void chooseWholeStep(std::uint8_t byte, std::span<const Match> matches, const StepCosts& step,
                     std::uint32_t* costs, Step& choice)
{
    choice = {1, byte};
    costs[0] = costs[1] + step.literals[byte] - 1;
    for (const Match& match : matches) {
        const std::uint32_t cost = costs[match.length] + step.lengths[match.length] - match.length +
                                   step.distances[slotOfDistance(match.distance)];
        if (static_cast<std::int32_t>(cost - costs[0]) > 0) continue;
        choice = {match.length, match.distance};
        costs[0] = cost;
    }
}

} // namespace

// From the end to the beginning, so that what follows a step is known.
LUMORA_VECTOR_CLONES static void chooseSteps(std::span<const std::uint8_t> bytes, const MatchLists& lists,
                                             std::span<const PricedBytes> prices, std::uint32_t* costs,
                                             Step* choices)
{
    for (std::size_t i = bytes.size(); i-- > 0;) {
        while (prices.size() > 1 && i < prices[prices.size() - 2].end)
            prices = prices.first(prices.size() - 1);
        const StepCosts& step = prices.back().costs;
        if (lists.takenAt(i) == MatchLists::Taken::whole) {
            chooseWholeStep(bytes[i], lists[i], step, costs + i, choices[i]);
        } else {
            const std::size_t reach = std::min(longestMatch, bytes.size() - i);
            chooseStep(bytes[i], lists[i], step, costs + i, costs[i + reach] - room, choices[i]);
        }
    }
}

double PathSearch::find(std::span<const std::uint8_t> bytes, const MatchLists& lists,
                        std::span<const PricedBytes> prices)
{
    m_costs.assign(bytes.size() + 1 + longestMatch + atOnce, 0);
    m_choices.resize(bytes.size());
    chooseSteps(bytes, lists, prices, m_costs.data(), m_choices.data());
    m_steps.clear();
    double bits = 0;
    for (std::size_t i = 0; i < bytes.size(); i += m_steps.back().length) {
        m_steps.push_back(m_choices[i]);
        bits += (m_costs[i] - m_costs[i + m_choices[i].length]) / double{bitCost};
    }
    return bits;
}

} // namespace lumora
