// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/match_finder.h"

#include "png/equal_bytes.h"

#include <algorithm>

namespace lumora {
namespace {

constexpr unsigned hashBits = 13;
constexpr std::size_t readAtOnce = 16; // so many bytes of data make a string
// While so much of the string at the pixel before is left, what lies near saves nothing.
constexpr std::size_t longEnough = 8;

std::uint32_t fourAt(const std::uint8_t* bytes)
{
    return bytes[0] | bytes[1] << 8U | bytes[2] << 16U | static_cast<std::uint32_t>(bytes[3]) << 24U;
}

std::uint32_t threeOf(std::uint32_t four)
{
    return four & 0xFFFFFFU;
}

std::size_t hashOf(std::uint32_t value)
{
    return value * 0x9E3779B1U >> (32 - hashBits);
}

} // namespace

MatchFinder::MatchFinder(const PixelRows& rows, std::size_t begin)
    : m_rowBytes(rows.rowBytes), m_step(rows.step), m_runs(rows.step),
      m_lastOf3(std::size_t{1} << hashBits, -1), m_lastOf4(std::size_t{1} << hashBits, -1)
{
    const std::size_t origin = begin - std::min(begin, windowBytes);
    m_data = rows.bytes.data() + origin;
    m_dataEnd = rows.bytes.size() - origin;
    m_column = origin % m_rowBytes;
    m_position = begin - origin;
    learn(0, m_position);
}

std::size_t MatchFinder::nextPixel(std::size_t position) const
{
    if (m_step == 1) return position;
    const std::size_t column = (position + m_column) % m_rowBytes;
    if (column == 0) return position + 1;
    const std::size_t within = (column - 1) % m_step;
    if (within == 0) return position;
    const std::size_t left = m_step - within;
    return position + left + (column + left == m_rowBytes ? 1 : 0);
}

bool MatchFinder::hasString(std::size_t position) const
{
    return m_dataEnd - position >= readAtOnce && m_end - position >= sizeof(std::uint32_t);
}

std::size_t MatchFinder::mostAt(std::size_t position) const
{
    return std::min(longestMatch, m_end - position);
}

std::size_t MatchFinder::lengthAt(std::size_t position, std::size_t distance) const
{
    const std::uint8_t* const string = m_data + position;
    return equalBytes(string, string - distance, 0, mostAt(position));
}

std::size_t MatchFinder::equalBefore(std::size_t position, std::size_t distance, std::size_t most) const
{
    const std::uint8_t* const string = m_data + position;
    return equalBytesBefore(string, string - distance, std::min(most, position - distance));
}

// A run, and the latest of the same three and four bytes; from now on these are the latest.
template <std::size_t most>
void MatchFinder::takeNear(std::size_t position, FewMatches<most>& near)
{
    if (!hasString(position)) return;
    const std::uint32_t four = fourAt(m_data + position);
    const auto here = static_cast<std::int32_t>(position);
    const auto offer = [&](std::int32_t last, std::uint32_t differing) {
        const auto distance = static_cast<std::size_t>(here - last);
        if (differing == 0 && distance < windowBytes) near.insert(lengthAt(position, distance), distance);
    };
    if (position > 0 && m_step > 1) offer(here - 1, threeOf(four ^ fourAt(m_data + position - 1)));
    std::int32_t& of3 = m_lastOf3[hashOf(threeOf(four))];
    if (of3 >= 0) offer(of3, threeOf(four ^ fourAt(m_data + of3)));
    of3 = here;
    if (m_step == 1) return; // all that is longer is in the tree
    std::int32_t& of4 = m_lastOf4[hashOf(four)];
    if (of4 >= 0) offer(of4, four ^ fourAt(m_data + of4));
    of4 = here;
}

void MatchFinder::search(std::size_t pixel)
{
    const std::size_t mostOfTree = std::min(longestMatch, m_dataEnd - pixel);
    const std::size_t most = mostAt(pixel);
    m_runs.meet({m_data, m_dataEnd}, pixel);
    if (m_runs.isDeepAt(pixel)) m_runs.take(pixel, most, m_atPixel);
    takeNear(pixel, m_atPixel);
    m_learned = pixel + 1;
    if (m_atPixel.longest().length == most) {
        m_tree.add(m_data, pixel, mostOfTree);
        return;
    }
    StringTree::Matches strings;
    const std::size_t count = m_tree.add(m_data, pixel, mostOfTree, strings);
    for (const Match& string : std::span<const Match>(strings).first(count))
        m_atPixel.insert(std::min<std::size_t>(string.length, most), string.distance);
}

// Whether the longest match is there at each of so many bytes, or all that is left.
bool MatchFinder::goesOn(std::size_t position, std::size_t distance) const
{
    const std::uint8_t* const string = m_data + position;
    const std::size_t far = std::min(2 * longestMatch, m_end - position);
    return equalBytes(string, string - distance, std::min(longestMatch, far), far) == far;
}

// Whether the match is the run itself, which is passed in another way.
bool MatchFinder::runsOn(std::size_t position, Match match) const
{
    return m_runs.isDeepAt(position) && match.distance == m_runs.distanceAt(position);
}

// Where the longest match goes on nothing else is looked for but a run, which is nearer.
void MatchFinder::leap(std::size_t length, std::size_t distance, MatchLists& lists)
{
    const std::size_t begin = m_position;
    m_position += length;
    std::array<Match, longestMatch> nearer{};
    for (const std::size_t unit : {m_step, std::size_t{1}}) {
        if (unit >= distance) continue;
        std::size_t equal = lengthAt(m_position, unit);
        for (std::size_t i = length; i-- > 0;) {
            const std::uint8_t* const byte = m_data + begin + i;
            equal = *byte == *(byte - unit) ? std::min(equal + 1, longestMatch) : 0;
            if (equal >= nearer[i].length)
                nearer[i] = {static_cast<std::uint16_t>(equal), static_cast<std::uint16_t>(unit)};
        }
    }
    for (std::size_t i = 0; i < length; ++i) {
        if (nearer[i].length >= shortestMatch) lists.add(nearer[i]);
        const std::size_t most = mostAt(begin + i);
        if (most >= shortestMatch)
            lists.add({static_cast<std::uint16_t>(most), static_cast<std::uint16_t>(distance)});
        lists.endList(MatchLists::Taken::whole);
    }
    learn(begin, m_position);
}

// The run but for its last pixels. Returns the longest match at the last byte that was passed.
Match MatchFinder::passRun(MatchLists& lists)
{
    FewMatches<PixelRuns::mostMatches> matches;
    for (; m_position < m_end && m_runs.isDeepAt(m_position); ++m_position) {
        matches.clear();
        if (mostAt(m_position) >= shortestMatch) m_runs.take(m_position, mostAt(m_position), matches);
        matches.addTo(lists);
        lists.endList(MatchLists::Taken::whole);
    }
    m_learned = std::max(m_learned, m_position);
    return matches.longest();
}

void MatchFinder::learn(std::size_t begin, std::size_t end)
{
    if (m_dataEnd < readAtOnce) return;
    end = std::min(end, m_dataEnd - readAtOnce);
    for (auto at = nextPixel(std::max(begin, m_learned)); at < end; at = nextPixel(at + 1)) {
        const std::uint32_t four = fourAt(m_data + at);
        m_lastOf3[hashOf(threeOf(four))] = static_cast<std::int32_t>(at);
        m_lastOf4[hashOf(four)] = static_cast<std::int32_t>(at);
        m_tree.add(m_data, at, std::min(longestMatch, m_dataEnd - at));
        m_runs.meet({m_data, m_dataEnd}, at);
        if (m_runs.isDeepAt(at + 1)) at = std::min(m_runs.deepEnd(), end) - 1;
        m_learned = at + 1;
    }
}

void MatchFinder::find(std::size_t bytes, MatchLists& lists)
{
    lists.clear();
    m_end = m_position + bytes;
    Match last{}; // the longest at the pixel before
    while (m_position < m_end) {
        const std::size_t pixel = std::min(nextPixel(m_position), m_end);
        const std::size_t between = pixel - m_position;
        for (std::size_t i = 0; i < between; ++i) {
            m_between[i].clear();
            if (last.length <= longEnough + i) takeNear(m_position + i, m_between[i]);
        }
        m_atPixel.clear();
        if (pixel < m_end && hasString(pixel)) search(pixel);
        const Match next = m_atPixel.longest();
        const std::size_t earlier = next.length > 0 ? equalBefore(pixel, next.distance, between) : 0;
        const bool leaps = next.length > 0 && next.length == mostAt(pixel) && !runsOn(pixel, next) &&
                           goesOn(pixel, next.distance);
        const std::size_t listed = leaps ? between - earlier : between;
        for (std::size_t i = 0; i < listed; ++i, ++m_position) {
            auto& matches = m_between[i];
            if (last.length > shortestMatch + i) matches.insert(last.length - i - 1, last.distance);
            const std::size_t ahead = between - i;
            if (earlier >= ahead)
                matches.insert(std::min(next.length + ahead, mostAt(m_position)), next.distance);
            matches.addTo(lists);
            lists.endList();
        }
        last = {};
        if (leaps) {
            leap(std::min(next.length + earlier, mostAt(m_position)), next.distance, lists);
        } else if (pixel < m_end) {
            m_atPixel.addTo(lists);
            lists.endList();
            ++m_position;
            last = m_runs.isDeepAt(m_position) ? passRun(lists) : next;
        }
    }
}

} // namespace lumora
