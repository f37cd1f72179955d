// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is repeated within runs of a pixel. The bytes there are those that lie as far from the end of an
// earlier run of the same pixel: two runs are compared once, behind their ends, instead of at each of their
// bytes, which a tree of strings would hold in a single long branch. One thread; throws std::bad_alloc.
#pragma once

#include "png/match_lists.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

class PixelRuns
{
public:
    // `step` bytes are a pixel, up to 8.
    explicit PixelRuns(std::size_t step);

    // Looks for a run from the pixel on, unless the one that was met last goes on there. At least 16 bytes
    // follow the pixel. Pixels come in their order, of the same data, at most 2 GB.
    void meet(std::span<const std::uint8_t> data, std::size_t pixel);

    // Whether the run that was met last is there, but for its last pixels, where shorter runs are repeated as
    // well.
    bool isDeepAt(std::size_t position) const { return position >= m_begin && position < m_deepEnd; }
    std::size_t deepEnd() const { return m_deepEnd; }

    // At how many bytes before it a byte within the run is repeated; 0 for the first ones.
    std::size_t distanceAt(std::size_t position) const { return position - m_begin >= m_unit ? m_unit : 0; }

    static constexpr std::size_t mostMatches = 33;

    // The matches of at most so many bytes deep in the run.
    template <std::size_t most>
    void take(std::size_t position, std::size_t mostLength, FewMatches<most>& matches) const
    {
        const std::size_t rest = m_end - position;
        if (const std::size_t distance = distanceAt(position); distance > 0) {
            matches.insert(std::min(rest, mostLength), distance);
            if (rest >= mostLength) return;
        }
        for (const Alike& other : std::span(m_alike).first(m_alikeCount)) {
            if (other.length >= rest)
                matches.insert(std::min(rest + other.behind, mostLength), other.distance);
        }
    }

private:
    struct Run
    {
        std::uint32_t end;
        std::uint32_t length;
        std::int32_t before; // in the order of meeting, with the same hash
    };

    // An earlier run that ends alike.
    struct Alike
    {
        std::uint32_t length;
        std::uint16_t behind;   // so many bytes behind the ends are equal
        std::uint16_t distance; // of the ends
    };

    void findAlike(std::span<const std::uint8_t> data, std::int32_t latest);

    std::size_t m_step;
    std::size_t m_begin = 0; // or as far before the pixel where the run was met as a match is long
    std::size_t m_end = 0;
    std::size_t m_deepEnd = 0;
    std::size_t m_unit = 1; // bytes that are repeated: a pixel's, or one where these are all equal

    std::vector<Run> m_runs;            // the latest, in a ring
    std::vector<std::int32_t> m_latest; // of each hash
    std::int32_t m_count = 0;
    // Nearest first; each is longer than those before it, or equal farther behind its end.
    std::array<Alike, mostMatches - 1> m_alike;
    std::size_t m_alikeCount = 0;
};

} // namespace lumora
