// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_filter.h"

#include "tests/platform/formats/png/noise.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace lumora {
namespace {

using Row = std::vector<std::uint8_t>;

int paeth(int a, int b, int c)
{
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

// What a reader makes of filtered rows, by the reconstruction functions of the PNG specification (9.2).
Row reconstructed(const Row& filteredRows, std::size_t rowBytes, std::size_t step)
{
    Row rows;
    Row above(rowBytes);
    for (std::size_t at = 0; at < filteredRows.size(); at += rowBytes + 1) {
        Row row(rowBytes);
        for (std::size_t i = 0; i < rowBytes; ++i) {
            const int a = i >= step ? row[i - step] : 0;
            const int b = above[i];
            const int c = i >= step ? above[i - step] : 0;
            const int predictions[] = {0, a, b, (a + b) / 2, paeth(a, b, c)};
            row[i] = static_cast<std::uint8_t>(filteredRows[at + 1 + i] + predictions[filteredRows[at]]);
        }
        rows.insert(rows.end(), row.begin(), row.end());
        above = row;
    }
    return rows;
}

Row filtersOf(const Row& filteredRows, std::size_t rowBytes)
{
    Row filters;
    for (std::size_t at = 0; at < filteredRows.size(); at += rowBytes + 1)
        filters.push_back(filteredRows[at]);
    return filters;
}

Row filtered(const Row& rows, std::size_t rowBytes, std::size_t step, RowFilters choice)
{
    Row apart(rows.size() + rows.size() / rowBytes);
    filterRows(rows, rowBytes, step, choice, apart);
    // In the place of the rows, with room in front of them.
    Row together(rows.size() / rowBytes);
    together.insert(together.end(), rows.begin(), rows.end());
    filterRows(std::span(together).last(rows.size()), rowBytes, step, choice, together);
    EXPECT_EQ(together, apart);
    return apart;
}

Row noise(std::size_t size)
{
    Row rows;
    test::Noise values;
    for (std::size_t i = 0; i < size; ++i)
        rows.push_back(static_cast<std::uint8_t>(values.next()));
    return rows;
}

TEST(FilteredRows, GiveTheRowsBackWhateverWasChosen)
{
    for (const std::size_t step : {1U, 3U, 4U, 8U}) {
        const std::size_t rowBytes = step * 5;
        const Row rows = noise(rowBytes * 7);
        for (const RowFilters choice : {RowFilters::none, RowFilters::leastSum, RowFilters::leastEntropy}) {
            const Row result = filtered(rows, rowBytes, step, choice);
            ASSERT_EQ(result.size(), (rowBytes + 1) * 7);
            EXPECT_EQ(reconstructed(result, rowBytes, step), rows) << step << static_cast<int>(choice);
        }
    }
}

TEST(FilteredRows, StayAsTheyAreWhereNoneIsAskedFor)
{
    EXPECT_EQ(filtersOf(filtered(noise(30), 10, 1, RowFilters::none), 10), (Row{0, 0, 0}));
}

// Two values far from zero and apart by steps that are smaller, but of three kinds.
TEST(FilteredRows, SuitTheCodeWhenEntropyCounts)
{
    const Row rows{100, 120, 120, 100, 120, 100, 100, 120, 100, 100, 120, 120};
    EXPECT_EQ(filtersOf(filtered(rows, rows.size(), 1, RowFilters::leastEntropy), rows.size()), Row{0});
    EXPECT_NE(filtersOf(filtered(rows, rows.size(), 1, RowFilters::leastSum), rows.size()), Row{0});
}

// More equal bytes in a row than are prepared for.
TEST(FilteredRows, SuitVeryLongRowsToo)
{
    Row rows = noise(1U << 16U);
    const Row first = rows;
    rows.insert(rows.end(), first.begin(), first.end());
    rows.insert(rows.end(), first.size(), 0);
    EXPECT_EQ(filtersOf(filtered(rows, first.size(), 4, RowFilters::leastEntropy), first.size()),
              (Row{0, 2, 0}));
}

// A constant row, a slope to the right, the same slope again, and it once more as its own mean.
TEST(FilteredRows, SuitEachRowWhenTheyAreChosenOneByOne)
{
    const Row rows{0,  0,  0,  0,   // best as it is
                   50, 60, 70, 80,  // by the left neighbour
                   50, 60, 70, 80,  // by the row above
                   52, 60, 70, 80}; // by the row above, but for one
    EXPECT_EQ(filtersOf(filtered(rows, 4, 1, RowFilters::leastSum), 4), (Row{0, 1, 2, 2}));
}

// Each value is the mean of its neighbours.
TEST(FilteredRows, SuitARowOfMeans)
{
    const Row rows{200, 10, 180, 30, 160, 50, 100, 55, 117, 73, 116, 83};
    EXPECT_EQ(filtered(rows, 6, 1, RowFilters::leastSum),
              (Row{0, 200, 10, 180, 30, 160, 50, 3, 0, 0, 0, 0, 0, 0}));
}

// Differences count as signed: 250 is a step down of 6.
TEST(FilteredRows, CountAStepDownLikeAStepUp)
{
    const Row falling{120, 114, 108, 102, 96, 90};
    EXPECT_EQ(filtered(falling, 6, 1, RowFilters::leastSum), (Row{1, 120, 250, 250, 250, 250, 250}));
}

} // namespace
} // namespace lumora
