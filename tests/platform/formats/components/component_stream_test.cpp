// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "components/component_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <utility>
#include <vector>

namespace lumora {
namespace {

constexpr int groups = 16;
constexpr ChromaRows allKinds[] = {ChromaRows::None, ChromaRows::Full, ChromaRows::Means,
                                   ChromaRows::SharpenedMeans};

ComponentShape shapeOf(int width, int height, ChromaRows chroma)
{
    return {width, height, (width + groups - 1) / groups * groups, (height + 1) / 2 * 2, chroma};
}

// What `look` says of each row when it is taken.
template <class Look>
auto lookedAt(const ComponentShape& shape, const std::vector<std::uint8_t>& row, Look look)
{
    std::vector<decltype(look(std::declval<const ComponentStream&>(), 0))> found;
    ComponentStream stream(shape, [&](int y) { found.push_back(look(stream, y)); });
    for (int y = 0; y < shape.height; ++y)
        stream.add(row.data());
    stream.finish();
    return found;
}

std::vector<std::uint8_t> repeated(int width, const std::vector<std::uint8_t>& pixel)
{
    std::vector<std::uint8_t> row;
    for (int x = 0; x < width; ++x)
        row.insert(row.end(), pixel.begin(), pixel.end());
    return row;
}

TEST(ComponentStream, GivesEveryRowOnceFromTheTopDown)
{
    for (const ChromaRows kind : allKinds) {
        const auto row = repeated(5, kind == ChromaRows::None ? std::vector<std::uint8_t>{9}
                                                              : std::vector<std::uint8_t>{9, 8, 7});
        for (int height = 1; height < 70; ++height) {
            const auto rows =
                lookedAt(shapeOf(5, height, kind), row, [](const ComponentStream&, int y) { return y; });
            std::vector<int> wanted(static_cast<std::size_t>(height + height % 2));
            std::iota(wanted.begin(), wanted.end(), 0);
            EXPECT_EQ(rows, wanted) << height;
        }
    }
}

TEST(ComponentStream, LeavesEvenColourAlone)
{
    for (const ChromaRows kind : {ChromaRows::Full, ChromaRows::Means, ChromaRows::SharpenedMeans}) {
        const auto rows = lookedAt(
            shapeOf(21, 7, kind), repeated(21, {200, 100, 40}), [](const ComponentStream& stream, int y) {
                const int chromaRow = y / 2;
                return std::vector{stream.luma().row(y)[20], stream.chroma(0).row(chromaRow)[10],
                                   stream.chroma(1).row(chromaRow)[10]};
            });
        for (const auto& samples : rows) {
            EXPECT_NEAR(samples[0], 123.1 - 128, 0.1);
            EXPECT_NEAR(samples[1], -46.9, 0.1);
            EXPECT_NEAR(samples[2], 54.9, 0.1);
        }
    }
}

TEST(ComponentStream, RepeatsTheLastColumnBeyondThePicture)
{
    const auto rows =
        lookedAt(shapeOf(3, 2, ChromaRows::Means), {10, 10, 10, 20, 20, 20, 30, 30, 30},
                 [](const ComponentStream& stream, int y) { return stream.luma().row(y)[groups - 1]; });
    EXPECT_NEAR(rows.front(), 30 - 128, 0.1);
}

} // namespace
} // namespace lumora
