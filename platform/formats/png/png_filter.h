// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The row filters of PNG. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

// How the rows are filtered: not at all, all by the predictor of Paeth, or each by whatever gives the
// smallest sum of absolute differences (the heuristic of the PNG specification, 12.8).
enum class RowFilters { none, paeth, adaptive };

// Every row behind its filter byte. `step` is the bytes of one whole pixel.
std::vector<std::uint8_t> filtered(std::span<const std::uint8_t> rows, std::size_t rowBytes, std::size_t step,
                                   RowFilters choice);

} // namespace lumora
