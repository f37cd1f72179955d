// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The row filters of PNG. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace lumora {

// How the rows are filtered: not at all, or each by whatever gives the smallest sum of absolute differences
// (the heuristic of the PNG specification, 12.8) or bytes that an ideal code of theirs alone would make
// shortest.
enum class RowFilters { none, leastSum, leastEntropy };

// Every row behind its filter byte, which makes `out` a byte a row longer than `rows`. `step` is the bytes of
// one whole pixel. The rows may be the last bytes of `out`: each is read before anything lies in its place.
void filterRows(std::span<const std::uint8_t> rows, std::size_t rowBytes, std::size_t step, RowFilters choice,
                std::span<std::uint8_t> out);

} // namespace lumora
