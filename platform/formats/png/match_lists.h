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
        m_leaps.clear();
        m_ends.assign(1, 0);
    }

    std::size_t size() const { return m_ends.size() - 1; }
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
    void endList() { m_ends.push_back(static_cast<std::uint32_t>(m_matches.size())); }

    // A match for whose bytes little is looked for: at each of them as much as a match can take, or all that
    // is left, is repeated at this distance. Their lists hold a nearer match or nothing.
    struct Leap
    {
        std::size_t begin;
        Match match;
    };
    void beginLeap(Match match) { m_leaps.push_back({size(), match}); }
    void addLeap(Match match)
    {
        beginLeap(match);
        m_ends.insert(m_ends.end(), match.length, m_ends.back());
    }
    std::span<const Leap> leaps() const { return m_leaps; }

private:
    std::vector<Match> m_matches;
    std::vector<std::uint32_t> m_ends{0};
    std::vector<Leap> m_leaps;
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
        lists.endList();
    }

private:
    std::array<Match, most> m_matches;
    std::size_t m_count = 0;
    Match m_longest{};
};

} // namespace lumora
