// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/transparent_color.h"

#include <algorithm>

namespace lumora {

std::optional<std::span<const std::uint8_t>> transparentColor(std::span<const std::uint8_t> pixels,
                                                              std::size_t colorBytes, std::size_t alphaBytes)
{
    const std::size_t step = colorBytes + alphaBytes;
    std::span<const std::uint8_t> hidden;
    for (auto rest = pixels; !rest.empty(); rest = rest.subspan(step)) {
        const auto color = rest.first(colorBytes);
        const auto alpha = rest.subspan(colorBytes, alphaBytes);
        if (std::ranges::all_of(alpha, [](std::uint8_t byte) { return byte == 0xFF; })) continue;
        if (std::ranges::any_of(alpha, [](std::uint8_t byte) { return byte != 0; })) return std::nullopt;
        if (hidden.empty()) hidden = color;
        if (!std::ranges::equal(color, hidden)) return std::nullopt;
    }
    if (hidden.empty()) return hidden;
    for (auto rest = pixels; !rest.empty(); rest = rest.subspan(step)) {
        const bool isOpaque = rest[colorBytes] != 0;
        if (isOpaque && std::ranges::equal(rest.first(colorBytes), hidden)) return std::nullopt;
    }
    return hidden;
}

} // namespace lumora
