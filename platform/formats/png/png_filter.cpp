// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_filter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace lumora {
namespace {

constexpr int filterCount = 5;

// Plain comparisons of 16 bits, which compilers turn into vectors.
std::int16_t distance(std::int16_t a, std::int16_t b)
{
    return static_cast<std::int16_t>(a < b ? b - a : a - b);
}

std::int16_t paeth(std::int16_t left, std::int16_t up, std::int16_t corner)
{
    const std::int16_t toLeft = distance(up, corner);
    const std::int16_t toUp = distance(left, corner);
    const std::int16_t toCorner =
        distance(static_cast<std::int16_t>(left + up), static_cast<std::int16_t>(2 * corner));
    const std::int16_t second = toUp <= toCorner ? up : corner;
    return toLeft <= std::min(toUp, toCorner) ? left : second;
}

template <int filter>
int prediction(std::uint8_t left, std::uint8_t up, std::uint8_t corner)
{
    if constexpr (filter == 1) return left;
    if constexpr (filter == 2) return up;
    if constexpr (filter == 3) return (left + up) / 2;
    if constexpr (filter == 4) return paeth(left, up, corner);
    return 0;
}

// A row with the pixel of zeros that the filters see before it.
class PaddedRow
{
public:
    PaddedRow(std::size_t bytes, std::size_t step) : m_bytes(step + bytes), m_step(step) {}

    std::uint8_t* row() { return m_bytes.data() + m_step; }
    const std::uint8_t* row() const { return m_bytes.data() + m_step; }
    const std::uint8_t* pixelBefore() const { return m_bytes.data(); }
    void swap(PaddedRow& other) { m_bytes.swap(other.m_bytes); }

private:
    std::vector<std::uint8_t> m_bytes;
    std::size_t m_step;
};

template <int filter>
void filterRow(const PaddedRow& current, const PaddedRow& above, std::span<std::uint8_t> out)
{
    const std::uint8_t* const row = current.row();
    const std::uint8_t* const left = current.pixelBefore();
    const std::uint8_t* const up = above.row();
    const std::uint8_t* const corner = above.pixelBefore();
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = static_cast<std::uint8_t>(row[i] - prediction<filter>(left[i], up[i], corner[i]));
}

using FilterRow = void (*)(const PaddedRow&, const PaddedRow&, std::span<std::uint8_t>);
constexpr std::array<FilterRow, filterCount> filters{filterRow<0>, filterRow<1>, filterRow<2>, filterRow<3>,
                                                     filterRow<4>};

double sumOf(std::span<const std::uint8_t> row)
{
    unsigned sum = 0;
    for (const std::uint8_t byte : row)
        sum += static_cast<unsigned>(std::abs(static_cast<std::int8_t>(byte)));
    return sum;
}

// The bits that an ideal code of a row's own bytes takes for it, less what is the same for all filters.
class Entropy
{
public:
    explicit Entropy(std::size_t rowBytes)
    {
        for (std::size_t count = 0; count <= std::min(rowBytes, mostPrepared); ++count)
            m_bitsSaved.push_back(bitsSavedBy(count));
    }

    double of(std::span<const std::uint8_t> row) const
    {
        // Several, because equal bytes in a row wait for each other's count.
        constexpr std::size_t lanes = 4;
        std::array<std::array<std::uint32_t, 256>, lanes> counts{};
        for (std::size_t i = 0; i < row.size(); ++i)
            ++counts[i % lanes][row[i]];
        double bits = 0;
        for (std::size_t byte = 0; byte < counts[0].size(); ++byte) {
            const std::size_t count =
                std::size_t{counts[0][byte]} + counts[1][byte] + counts[2][byte] + counts[3][byte];
            bits -= count < m_bitsSaved.size() ? m_bitsSaved[count] : bitsSavedBy(count);
        }
        return bits;
    }

private:
    static double bitsSavedBy(std::size_t count)
    {
        const auto n = static_cast<double>(count);
        return count == 0 ? 0 : n * std::log2(n);
    }

    static constexpr std::size_t mostPrepared = 1U << 14U;
    std::vector<double> m_bitsSaved; // by how often a byte occurs
};

} // namespace

void filterRows(std::span<const std::uint8_t> rows, std::size_t rowBytes, std::size_t step, RowFilters choice,
                std::span<std::uint8_t> out)
{
    const std::size_t height = rows.size() / rowBytes;
    const Entropy entropy(choice == RowFilters::leastEntropy ? rowBytes : 0);
    const auto costOf = [&](std::span<const std::uint8_t> row) {
        return choice == RowFilters::leastEntropy ? entropy.of(row) : sumOf(row);
    };
    PaddedRow above(rowBytes, step);
    PaddedRow row(rowBytes, step);
    std::vector<std::uint8_t> candidate(rowBytes);
    std::vector<std::uint8_t> best(rowBytes);
    for (std::size_t y = 0; y < height; ++y) {
        std::ranges::copy(rows.subspan(y * rowBytes, rowBytes), row.row());
        filters[0](row, above, best);
        std::uint8_t bestFilter = 0;
        double lowest = choice == RowFilters::none ? 0 : costOf(best);
        for (std::uint8_t filter = 1; choice != RowFilters::none && filter < filterCount; ++filter) {
            filters.at(filter)(row, above, candidate);
            const double cost = costOf(candidate);
            if (cost >= lowest) continue;
            lowest = cost;
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
