// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/palette_chain.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <optional>

namespace lumora {
namespace {

struct Meeting
{
    std::uint64_t count;
    std::size_t one, other;
};

// How often two colours are neighbours, the most frequent first.
std::vector<Meeting> meetingsIn(const PngLayout& layout)
{
    const std::size_t colors = layout.palette.size();
    const auto rows = layout.pixels.rows();
    std::vector<std::uint64_t> counts(colors * colors);
    for (std::size_t at = 0; at < rows.size(); ++at) {
        if (at % layout.rowBytes != 0) ++counts[rows[at] * colors + rows[at - 1]];
        if (at >= layout.rowBytes) ++counts[rows[at] * colors + rows[at - layout.rowBytes]];
    }
    std::vector<Meeting> meetings;
    for (std::size_t one = 0; one < colors; ++one) {
        for (std::size_t other = 0; other < one; ++other) {
            const std::uint64_t count = counts[one * colors + other] + counts[other * colors + one];
            if (count > 0) meetings.push_back({count, one, other});
        }
    }
    std::ranges::stable_sort(meetings, std::greater{}, &Meeting::count);
    return meetings;
}

// Colours linked to at most two others each, without circles.
class Chains
{
public:
    explicit Chains(std::size_t colors) : m_links(colors), m_chain(colors), m_isTaken(colors)
    {
        std::iota(m_chain.begin(), m_chain.end(), std::size_t{0});
    }

    void link(std::size_t one, std::size_t other)
    {
        if (m_links[one].size() == 2 || m_links[other].size() == 2) return;
        if (m_chain[one] == m_chain[other]) return;
        m_links[one].push_back(other);
        m_links[other].push_back(one);
        const std::size_t joined = m_chain[one];
        const std::size_t kept = m_chain[other];
        std::ranges::replace(m_chain, joined, kept);
    }

    // One chain after another, each from its end of the lower index.
    std::vector<std::size_t> inOrder()
    {
        std::vector<std::size_t> order;
        for (std::size_t color = 0; color < m_links.size(); ++color) {
            if (m_isTaken[color] || m_links[color].size() == 2) continue;
            for (std::optional<std::size_t> next = color; next; next = untakenNeighbour(*next)) {
                m_isTaken[*next] = true;
                order.push_back(*next);
            }
        }
        return order;
    }

private:
    std::optional<std::size_t> untakenNeighbour(std::size_t color) const
    {
        for (const std::size_t neighbour : m_links[color]) {
            if (!m_isTaken[neighbour]) return neighbour;
        }
        return std::nullopt;
    }

    std::vector<std::vector<std::size_t>> m_links;
    std::vector<std::size_t> m_chain; // the same number for all colours of one chain
    std::vector<bool> m_isTaken;
};

} // namespace

std::vector<std::uint8_t> chainedOrder(const PngLayout& layout)
{
    Chains chains(layout.palette.size());
    for (const Meeting& meeting : meetingsIn(layout))
        chains.link(meeting.one, meeting.other);
    auto order = chains.inOrder();
    std::stable_partition(order.begin(), order.end(),
                          [&](std::size_t color) { return layout.palette[color].alpha != 255; });
    std::vector<std::uint8_t> newIndex(order.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        newIndex[order[i]] = static_cast<std::uint8_t>(i);
    return newIndex;
}

void renumber(std::span<std::uint8_t> indices, std::span<const std::uint8_t> newIndex)
{
    for (std::uint8_t& index : indices)
        index = newIndex[index];
}

void reorder(std::vector<PaletteColor>& palette, std::span<const std::uint8_t> newIndex)
{
    const std::vector<PaletteColor> before = palette;
    for (std::size_t i = 0; i < before.size(); ++i)
        palette[newIndex[i]] = before[i];
}

} // namespace lumora
