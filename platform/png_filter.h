// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The row filters of PNG. For the codec layer only.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

// Every row behind its filter byte. Adaptive takes for each row the filter with the smallest sum of absolute
// differences (the heuristic of the PNG specification, 12.8); otherwise no row is filtered. `step` is the
// bytes of one whole pixel.
std::vector<std::uint8_t> filtered(std::span<const std::uint8_t> rows, std::size_t rowBytes, std::size_t step,
                                   bool isAdaptive);

} // namespace lumora
