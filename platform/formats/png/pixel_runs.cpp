// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/pixel_runs.h"

#include "png/equal_bytes.h"

#include <algorithm>
#include <cstring>

namespace lumora {
namespace {

constexpr std::size_t pixelsAtEnd = 8;
// What runs on is met again there: no piece of a blank picture looks at all that follows.
constexpr std::size_t longestRun = std::size_t{1} << 20U;
constexpr unsigned hashBits = 12;
constexpr std::int32_t mostRuns = 4096; // no window holds more
constexpr int mostCompared = 64;

// Of the pixel before and the byte behind the end of a run.
std::size_t hashOf(const std::uint8_t* end, std::size_t step)
{
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, end - step, std::min(step + 1, sizeof bytes));
    return bytes * 0x9E3779B97F4A7C15U >> (64 - hashBits);
}

} // namespace

PixelRuns::PixelRuns(std::size_t step)
    : m_step(step), m_runs(mostRuns), m_latest(std::size_t{1} << hashBits, -mostRuns)
{
}

void PixelRuns::meet(std::span<const std::uint8_t> data, std::size_t pixel)
{
    if (pixel < m_end) return;
    const std::uint8_t* const string = data.data() + pixel;
    const std::size_t most = std::min(data.size() - pixel - 2 * m_step, longestRun);
    const std::size_t end = pixel + m_step + equalBytes(string + m_step, string, 0, most);
    if (end - pixel <= pixelsAtEnd * m_step) return;
    const std::size_t before = equalBytesBefore(string + m_step, string, std::min(pixel, longestMatch));
    m_begin = pixel - before;
    m_end = end;
    m_deepEnd = m_end - pixelsAtEnd * m_step;
    m_unit = equalBytes(string + 1, string, 0, m_step - 1) == m_step - 1 ? 1 : m_step;
    std::int32_t& latest = m_latest[hashOf(data.data() + m_end, m_step)];
    findAlike(data, latest);
    m_runs[static_cast<std::size_t>(m_count % mostRuns)] = {
        static_cast<std::uint32_t>(m_end), static_cast<std::uint32_t>(m_end - m_begin), latest};
    latest = m_count++;
}

void PixelRuns::findAlike(std::span<const std::uint8_t> data, std::int32_t latest)
{
    const std::uint8_t* const pixel = data.data() + m_end - m_step;
    const std::size_t most = m_step + std::min(longestMatch, data.size() - m_end);
    std::size_t longest = 0;
    std::size_t farthest = 0;
    m_alikeCount = 0;
    std::int32_t at = latest;
    for (int i = 0; i < mostCompared && m_alikeCount < m_alike.size() && at > m_count - mostRuns; ++i) {
        const Run& other = m_runs[static_cast<std::size_t>(at % mostRuns)];
        const std::size_t distance = m_end - other.end;
        if (distance >= windowBytes) break;
        at = other.before;
        const std::size_t equal = equalBytes(pixel, pixel - distance, 0, most);
        if (equal < m_step) continue;
        const std::size_t behind = equal - m_step;
        if (other.length <= longest && behind <= farthest) continue;
        longest = std::max<std::size_t>(longest, other.length);
        farthest = std::max(farthest, behind);
        m_alike[m_alikeCount++] = {other.length, static_cast<std::uint16_t>(behind),
                                   static_cast<std::uint16_t>(distance)};
    }
}

} // namespace lumora
