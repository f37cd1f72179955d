// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "indexed_pixels.h"

#include <algorithm>
#include <array>
#include <unordered_map>
#include <utility>

namespace lumora {
namespace {

constexpr std::size_t mostColors = 256;

PaletteColor colorOf(const std::uint8_t* p, int bands)
{
    switch (bands) {
    case 1:
        return {p[0], p[0], p[0], 255};
    case 2:
        return {p[0], p[0], p[0], p[1]};
    case 3:
        return {p[0], p[1], p[2], 255};
    default:
        return {p[0], p[1], p[2], p[3]};
    }
}

std::uint32_t keyOf(const PaletteColor& c)
{
    return std::uint32_t{c.red} << 24U | std::uint32_t{c.green} << 16U | std::uint32_t{c.blue} << 8U |
           c.alpha;
}

int brightnessOf(const PaletteColor& c)
{
    return 299 * c.red + 587 * c.green + 114 * c.blue; // the weights of ITU-R BT.601
}

// Opaque entries at the end need no transparency stored.
std::array<std::uint8_t, mostColors> sortPalette(std::vector<PaletteColor>& palette)
{
    std::vector<std::size_t> order(palette.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    std::ranges::stable_sort(order, {}, [&](std::size_t i) {
        return std::pair(palette[i].alpha == 255, brightnessOf(palette[i]));
    });
    std::array<std::uint8_t, mostColors> newIndex{};
    std::vector<PaletteColor> sorted;
    for (std::size_t i = 0; i < order.size(); ++i) {
        newIndex.at(order[i]) = static_cast<std::uint8_t>(i);
        sorted.push_back(palette[order[i]]);
    }
    palette = std::move(sorted);
    return newIndex;
}

} // namespace

std::optional<IndexedPixels> indexed(std::span<const std::uint8_t> pixels, int bands)
{
    IndexedPixels result;
    result.indices.reserve(pixels.size() / static_cast<std::size_t>(bands));
    std::unordered_map<std::uint32_t, std::uint8_t> known;
    std::uint32_t lastKey = 0;
    std::uint8_t lastIndex = 0;
    for (std::size_t at = 0; at < pixels.size(); at += static_cast<std::size_t>(bands)) {
        const PaletteColor color = colorOf(pixels.data() + at, bands);
        const std::uint32_t key = keyOf(color);
        if (known.empty() || key != lastKey) {
            const auto [place, isNew] =
                known.try_emplace(key, static_cast<std::uint8_t>(result.palette.size()));
            if (isNew && result.palette.size() == mostColors) return std::nullopt;
            if (isNew) result.palette.push_back(color);
            lastKey = key;
            lastIndex = place->second;
        }
        result.indices.push_back(lastIndex);
    }
    const auto newIndex = sortPalette(result.palette);
    for (std::uint8_t& index : result.indices)
        index = newIndex.at(index);
    return result;
}

} // namespace lumora
