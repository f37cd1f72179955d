// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_filter.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace lumora {
namespace {

constexpr int filterCount = 5;
constexpr std::uint8_t paethFilter = 4;

int paeth(int left, int up, int corner)
{
    const int toLeft = std::abs(up - corner);
    const int toUp = std::abs(left - corner);
    const int toCorner = std::abs(left + up - 2 * corner);
    if (toLeft <= toUp && toLeft <= toCorner) return left;
    return toUp <= toCorner ? up : corner;
}

template <int filter>
int prediction(int left, int up, int corner)
{
    if constexpr (filter == 1) return left;
    if constexpr (filter == 2) return up;
    if constexpr (filter == 3) return (left + up) / 2;
    if constexpr (filter == 4) return paeth(left, up, corner);
    return 0;
}

// Filters one row into `out` and returns the sum of its differences, taken as signed bytes.
template <int filter>
unsigned filterRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t bytes, std::size_t step,
                   std::uint8_t* out)
{
    unsigned sum = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
        const int left = i >= step ? row[i - step] : 0;
        const int corner = i >= step ? above[i - step] : 0;
        out[i] = static_cast<std::uint8_t>(row[i] - prediction<filter>(left, above[i], corner));
        sum += static_cast<unsigned>(std::abs(static_cast<std::int8_t>(out[i])));
    }
    return sum;
}

using FilterRow = unsigned (*)(const std::uint8_t*, const std::uint8_t*, std::size_t, std::size_t,
                               std::uint8_t*);
constexpr std::array<FilterRow, filterCount> filters{filterRow<0>, filterRow<1>, filterRow<2>, filterRow<3>,
                                                     filterRow<4>};

} // namespace

void filterRows(std::span<const std::uint8_t> rows, std::size_t rowBytes, std::size_t step, RowFilters choice,
                std::span<std::uint8_t> out)
{
    const std::size_t height = rows.size() / rowBytes;
    std::vector<std::uint8_t> above(rowBytes);
    std::vector<std::uint8_t> row(rowBytes);
    std::vector<std::uint8_t> candidate(rowBytes);
    std::vector<std::uint8_t> best(rowBytes);
    for (std::size_t y = 0; y < height; ++y) {
        std::ranges::copy(rows.subspan(y * rowBytes, rowBytes), row.begin());
        std::uint8_t bestFilter = choice == RowFilters::paeth ? paethFilter : 0;
        unsigned bestSum = filters.at(bestFilter)(row.data(), above.data(), rowBytes, step, best.data());
        for (std::uint8_t filter = 1; choice == RowFilters::adaptive && filter < filterCount; ++filter) {
            const unsigned sum =
                filters.at(filter)(row.data(), above.data(), rowBytes, step, candidate.data());
            if (sum >= bestSum) continue;
            bestSum = sum;
            bestFilter = filter;
            best.swap(candidate);
        }
        const auto place = out.subspan(y * (rowBytes + 1), rowBytes + 1);
        place.front() = bestFilter;
        std::ranges::copy(best, place.begin() + 1);
        above.swap(row);
    }
}

} // namespace lumora
