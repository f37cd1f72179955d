// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The exact colours of a picture, when they are few. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace lumora {

struct PaletteColor
{
    std::uint8_t red, green, blue, alpha;
};

struct IndexedPixels
{
    // At most 256. Those that are not opaque come first; among equals the darker ones, so that close colours
    // have close indices and a picture's rows can be foretold.
    std::vector<PaletteColor> palette;
    std::vector<std::uint8_t> indices; // one a pixel
};

// Pixels of `bands` 8-bit components (1 gray, 2 with alpha, 3 RGB, 4 with alpha). Absent with more than 256
// colours.
std::optional<IndexedPixels> indexed(std::span<const std::uint8_t> pixels, int bands);

} // namespace lumora
