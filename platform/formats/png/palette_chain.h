// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Another order of a palette. Any thread.
#pragma once

#include "png/png_layout.h"

#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

// The new index of each colour, by which colours that meet in the picture have close indices, as far as one
// row of colours allows; those that are not opaque come first. For layouts of 8-bit indices.
std::vector<std::uint8_t> chainedOrder(const PngLayout& layout);

void renumber(std::span<std::uint8_t> indices, std::span<const std::uint8_t> newIndex);
void reorder(std::vector<PaletteColor>& palette, std::span<const std::uint8_t> newIndex);

} // namespace lumora
