// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is repeated in the filtered rows of a picture. One thread; throws std::bad_alloc.
#pragma once

#include "png/match_lists.h"
#include "png/pixel_runs.h"
#include "png/string_tree.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

using ByteSpan = std::span<const std::uint8_t>;

// Rows of a byte each, the filter, and then pixels. What is no picture has pixels of one byte.
struct PixelRows
{
    ByteSpan bytes;
    std::size_t rowBytes = 1; // with the filter
    std::size_t step = 1;     // bytes of a pixel, up to 8
};

// Strings are looked for where pixels begin only, which is where most of them begin again: a third of the
// work for colours of three bytes. What begins at another byte is found as the rest or as the beginning of
// one of those, or as the latest of the same three or four bytes. Runs are looked at as a whole.
class MatchFinder
{
public:
    // Begins there, and knows what lies in the window before. At most 2 GB may follow.
    MatchFinder(const PixelRows& rows, std::size_t begin);

    // The matches at each of the bytes that come next, none of which reaches beyond them.
    void find(std::size_t bytes, MatchLists& lists);

private:
    static constexpr std::size_t mostBetween = 8; // bytes from one pixel to the next, with a filter
    static constexpr std::size_t mostNear = 3;

    std::size_t nextPixel(std::size_t position) const;
    bool hasString(std::size_t position) const;
    std::size_t mostAt(std::size_t position) const;
    std::size_t lengthAt(std::size_t position, std::size_t distance) const;
    std::size_t equalBefore(std::size_t position, std::size_t distance, std::size_t most) const;
    template <std::size_t most>
    void takeNear(std::size_t position, FewMatches<most>& near);
    void search(std::size_t pixel);
    bool goesOn(std::size_t position, std::size_t distance) const;
    bool runsOn(std::size_t position, Match match) const;
    void leap(std::size_t length, std::size_t distance, MatchLists& lists);
    Match passRun(MatchLists& lists);
    void learn(std::size_t begin, std::size_t end);

    const std::uint8_t* m_data; // from here on positions are counted
    std::size_t m_dataEnd;
    std::size_t m_column; // of position 0
    std::size_t m_rowBytes;
    std::size_t m_step;
    std::size_t m_position;    // has no list yet
    std::size_t m_end = 0;     // of the lists that are made now
    std::size_t m_learned = 0; // end of what was looked at for the tree

    StringTree m_tree;
    PixelRuns m_runs;
    std::vector<std::int32_t> m_lastOf3;
    std::vector<std::int32_t> m_lastOf4;

    // Before the pixel that comes next; also of what goes on there and what is earlier than at the pixel.
    std::array<FewMatches<mostNear + 2>, mostBetween> m_between;
    FewMatches<mostNear + StringTree::mostSteps + PixelRuns::mostMatches> m_atPixel;
};

} // namespace lumora
