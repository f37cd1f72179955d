// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "resampler.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <functional>
#include <numbers>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace lumora {
namespace {

struct Picture
{
    PixelSize size;
    int bands;
    std::vector<double> components;

    double& at(int x, int y, int band)
    {
        return components[(static_cast<std::size_t>(y) * static_cast<std::size_t>(size.width) +
                           static_cast<std::size_t>(x)) *
                              static_cast<std::size_t>(bands) +
                          static_cast<std::size_t>(band)];
    }
};

Picture blank(PixelSize size, int bands)
{
    return {size, bands,
            std::vector<double>(static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height) *
                                static_cast<std::size_t>(bands))};
}

// Fine detail over slow waves, so that a wrong row or a seam between bands shows.
Picture detailed(PixelSize size, int bands)
{
    std::mt19937 random(7);
    Picture picture = blank(size, bands);
    for (int y = 0; y < size.height; ++y) {
        for (int x = 0; x < size.width; ++x) {
            for (int band = 0; band < bands; ++band) {
                const double wave = 128 + 60 * std::sin(0.11 * x + band) + 50 * std::cos(0.07 * y - band);
                picture.at(x, y, band) =
                    std::clamp(std::round(wave + static_cast<double>(random() % 41U) - 20.0), 0.0, 255.0);
            }
        }
    }
    return picture;
}

double lanczos(double x)
{
    if (x == 0) return 1;
    if (std::abs(x) >= 3) return 0;
    const double t = std::numbers::pi * x;
    return 3 * std::sin(t) * std::sin(t / 3) / (t * t);
}

// One axis by the definition: the kernel stretched by the reduction, mirrored at the edges, weights summing
// to 1.
std::vector<double> reducedLine(const std::vector<double>& line, int length)
{
    const int count = static_cast<int>(line.size());
    const double scale = std::max(1.0, static_cast<double>(count) / length);
    std::vector<double> reduced;
    for (int i = 0; i < length; ++i) {
        const double center = (i + 0.5) * count / length;
        double sum = 0;
        double weights = 0;
        for (int k = static_cast<int>(center - 3 * scale) - 1; k <= static_cast<int>(center + 3 * scale) + 1;
             ++k) {
            const double weight = lanczos((k + 0.5 - center) / scale);
            const int mirrored = k < 0 ? -k - 1 : k >= count ? 2 * count - 1 - k : k;
            sum += weight * line[static_cast<std::size_t>(std::clamp(mirrored, 0, count - 1))];
            weights += weight;
        }
        reduced.push_back(sum / weights);
    }
    return reduced;
}

Picture reference(Picture from, PixelSize to)
{
    Picture narrow = blank({to.width, from.size.height}, from.bands);
    Picture small = blank(to, from.bands);
    for (int band = 0; band < from.bands; ++band) {
        for (int y = 0; y < from.size.height; ++y) {
            std::vector<double> row;
            for (int x = 0; x < from.size.width; ++x)
                row.push_back(from.at(x, y, band));
            row = reducedLine(row, to.width);
            for (int x = 0; x < to.width; ++x)
                narrow.at(x, y, band) = std::clamp(row[static_cast<std::size_t>(x)], 0.0, 255.0);
        }
        for (int x = 0; x < to.width; ++x) {
            std::vector<double> column;
            for (int y = 0; y < from.size.height; ++y)
                column.push_back(narrow.at(x, y, band));
            column = reducedLine(column, to.height);
            for (int y = 0; y < to.height; ++y)
                small.at(x, y, band) = std::clamp(column[static_cast<std::size_t>(y)], 0.0, 255.0);
        }
    }
    return small;
}

// Serves rows from memory, wider apart than they are long, and notes in which order they are asked for.
class Rows
{
public:
    explicit Rows(const Picture& picture)
        : m_stride(static_cast<std::size_t>(picture.size.width) * static_cast<std::size_t>(picture.bands) +
                   5),
          m_bytes(m_stride * static_cast<std::size_t>(picture.size.height))
    {
        const std::size_t rowLength = m_stride - 5;
        for (std::size_t i = 0; i < picture.components.size(); ++i)
            m_bytes[i / rowLength * m_stride + i % rowLength] =
                static_cast<std::uint8_t>(picture.components[i]);
    }

    Result<RowSpan> operator()(int first, int count)
    {
        if (first != m_next) return Error{"asked out of order"};
        m_next += count;
        if (m_next > m_damagedFrom) return Error{"damaged"};
        return RowSpan{m_bytes.data() + m_stride * static_cast<std::size_t>(first),
                       static_cast<std::ptrdiff_t>(m_stride)};
    }

    void damageFrom(int row) { m_damagedFrom = row; }
    int rowsRead() const { return m_next; }

private:
    std::size_t m_stride;
    std::vector<std::uint8_t> m_bytes;
    int m_next = 0;
    int m_damagedFrom = 1 << 30;
};

SourceShape whole(PixelSize size)
{
    return {size, static_cast<double>(size.width), static_cast<double>(size.height)};
}

using Taker = std::function<void(int first, int count, const std::uint8_t* rows)>;

Status resample(Rows& source, PixelSize from, PixelSize to, int bands, const Taker& take)
{
    auto resampler = Resampler::create(whole(from), to, bands);
    if (!resampler) return resampler.error();
    std::vector<std::uint8_t> rows(static_cast<std::size_t>(to.width * bands * streamedRows));
    for (int top = 0; top < to.height; top += streamedRows) {
        const int count = std::min(streamedRows, to.height - top);
        if (auto status = resampler->next(std::ref(source), count, rows.data()); !status) return status;
        take(top, count, rows.data());
    }
    return Done{};
}

struct ReductionCase
{
    std::string name;
    PixelSize from;
    PixelSize to;
};

void PrintTo(const ReductionCase& sizes, std::ostream* stream)
{
    *stream << sizes.name;
}

class Reduction : public testing::TestWithParam<std::tuple<ReductionCase, int>>
{
};

TEST_P(Reduction, IsThatOfTheKernelInEveryRow)
{
    const auto& [sizes, bands] = GetParam();
    const Picture picture = detailed(sizes.from, bands);
    Picture expected = reference(picture, sizes.to);
    Rows rows(picture);
    int next = 0;
    double worst = 0;

    const auto status =
        resample(rows, sizes.from, sizes.to, bands, [&](int first, int count, const std::uint8_t* result) {
            ASSERT_EQ(first, next);
            next += count;
            for (int y = first; y < first + count; ++y)
                for (int x = 0; x < sizes.to.width; ++x)
                    for (int band = 0; band < bands; ++band)
                        worst = std::max(worst, std::abs(expected.at(x, y, band) - *result++));
        });

    ASSERT_TRUE(status) << status.error().description;
    EXPECT_EQ(next, sizes.to.height);
    EXPECT_EQ(rows.rowsRead(), sizes.from.height);
    EXPECT_LE(worst, 0.75);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, Reduction,
    testing::Combine(testing::Values(ReductionCase{"SlightlySmaller", {301, 333}, {290, 321}},
                                     ReductionCase{"BitMoreThanHalf", {641, 828}, {315, 406}},
                                     ReductionCase{"Third", {300, 700}, {100, 233}},
                                     ReductionCase{"TallAndTiny", {40, 1500}, {3, 112}},
                                     ReductionCase{"ToOneRow", {200, 90}, {20, 1}}),
                     testing::Values(1, 2, 3, 4)),
    [](const auto& test) {
        return std::get<0>(test.param).name + std::to_string(std::get<1>(test.param)) + "Bands";
    });

TEST(DamagedRows, FailTheReductionEvenInTheLastOne)
{
    const Picture picture = detailed({80, 400}, 3);
    Rows rows(picture);
    rows.damageFrom(399);

    const auto status = resample(rows, {80, 400}, {20, 100}, 3, [](int, int, const std::uint8_t*) {});

    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().description, "damaged");
}

} // namespace
} // namespace lumora
