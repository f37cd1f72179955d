// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// For each of some bytes that follow each other, the matches that may begin there: of growing length and
// growing distance, without those that a longer one of the same cost makes useless.
#pragma once

#include "png/deflate_code.h"

#include <array>
#include <span>
#include <vector>

namespace lumora {

class MatchLists
{
public:
    void clear()
    {
        m_matches.clear();
        m_taken.clear();
        m_ends.assign(1, 0);
    }

    std::size_t size() const { return m_taken.size(); }
    std::span<const Match> operator[](std::size_t byte) const
    {
        return {m_matches.data() + m_ends[byte], m_ends[byte + 1] - m_ends[byte]};
    }

    // To the list of the byte that comes next; nearest first.
    void add(Match match)
    {
        if (m_matches.size() > m_ends.back()) {
            Match& nearer = m_matches.back();
            if (match.length <= nearer.length) return;
            if (slotOfDistance(match.distance) == slotOfDistance(nearer.distance)) {
                nearer = match;
                return;
            }
        }
        m_matches.push_back(match);
    }

    // Whether shorter matches at the same distance are possible as well, or each is to be taken whole: where
    // much is repeated, nothing is won by less.
    enum class Taken : std::uint8_t { inPart, whole };
    void endList(Taken taken = Taken::inPart)
    {
        m_ends.push_back(static_cast<std::uint32_t>(m_matches.size()));
        m_taken.push_back(taken);
    }
    Taken takenAt(std::size_t byte) const { return m_taken[byte]; }

private:
    std::vector<Match> m_matches;
    std::vector<std::uint32_t> m_ends{0};
    std::vector<Taken> m_taken;
};

// Matches at one byte, nearest first.
template <std::size_t most>
class FewMatches
{
public:
    void clear()
    {
        m_count = 0;
        m_longest = {};
    }

    void insert(std::size_t length, std::size_t distance)
    {
        const Match match{static_cast<std::uint16_t>(length), static_cast<std::uint16_t>(distance)};
        if (match.length > m_longest.length ||
            (match.length == m_longest.length && match.distance < m_longest.distance))
            m_longest = match;
        std::size_t at = m_count++;
        for (; at > 0 && m_matches[at - 1].distance > match.distance; --at)
            m_matches[at] = m_matches[at - 1];
        m_matches[at] = match;
    }

    // The nearest of several; of no length where there is none.
    Match longest() const { return m_longest; }

    void addTo(MatchLists& lists) const
    {
        for (std::size_t i = 0; i < m_count; ++i)
            lists.add(m_matches[i]);
    }

private:
    std::array<Match, most> m_matches;
    std::size_t m_count = 0;
    Match m_longest{};
};

} // namespace lumora
