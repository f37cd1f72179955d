// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "components/chroma_halving.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace lumora {
namespace {

constexpr int width = 32;
// With a sample more on each side.
using Row = std::array<float, width + 2>;

Row repeated(float value)
{
    Row row;
    row.fill(value);
    return row;
}

TEST(ChromaHalving, TakesMeansOfSquares)
{
    Row upper = repeated(1);
    Row lower = repeated(3);
    upper[4] = 9;
    Row half = repeated(0);
    halveRows(upper.data(), lower.data(), width / 2, half.data());
    EXPECT_EQ(half[0], 2);
    EXPECT_EQ(half[2], 4);
}

TEST(ChromaHalving, LeavesEvenColourAlone)
{
    const Row row = repeated(37);
    Row sharp = repeated(0);
    sharpenRow(row.data() + 1, row.data() + 1, row.data() + 1, width, sharp.data() + 1);
    EXPECT_FLOAT_EQ(sharp[1], 37);
    Row full = repeated(0);
    doubleRow(row.data() + 1, row.data() + 1, width / 2, full.data());
    EXPECT_FLOAT_EQ(full[5], 37);
}

// What a decoder's lines blur comes back nearer to the means.
TEST(ChromaHalving, SharpensAgainstTheLinesOfADecoder)
{
    Row row = repeated(0);
    for (std::size_t x = 9; x < row.size(); ++x)
        row[x] = 60;
    Row sharp = repeated(0);
    sharpenRow(row.data() + 1, row.data() + 1, row.data() + 1, width, sharp.data() + 1);
    sharp[0] = sharp[1];
    const auto meanAt = [](const Row& half, int x) {
        std::array<float, 2L * width> full{};
        doubleRow(half.data() + 1, half.data() + 1, width / 2, full.data());
        const auto at = 2 * static_cast<std::size_t>(x);
        return (full.at(at) + full.at(at + 1)) / 2;
    };
    for (const int x : {7, 8}) {
        const float wanted = row.at(static_cast<std::size_t>(x) + 1);
        EXPECT_LT(std::abs(meanAt(sharp, x) - wanted), 0.5F * std::abs(meanAt(row, x) - wanted)) << x;
    }
}

float lightOf(float luma, float blue, float red)
{
    const auto linear = [](float value) {
        const float v = std::min(std::max((value + 128) / 255, 0.0F), 1.0F);
        return v <= 0.04045F ? v / 12.92F : std::pow((v + 0.055F) / 1.055F, 2.4F);
    };
    return 0.2126F * linear(luma + 1.402F * red) +
           0.7152F * linear(luma - 0.344136F * blue - 0.714136F * red) +
           0.0722F * linear(luma + 1.772F * blue);
}

TEST(ChromaHalving, KeepsTheLightOfColoursThatChange)
{
    const Row ownBlue = repeated(-30);
    const Row ownRed = repeated(70);
    const Row shownBlue = repeated(-10);
    const Row shownRed = repeated(30);
    Row luma = repeated(-20);
    const float wanted = lightOf(-20, -30, 70);
    const float before = std::abs(lightOf(-20, -10, 30) - wanted);
    keepLight({ownBlue.data(), ownRed.data()}, {shownBlue.data(), shownRed.data()}, width, luma.data());
    EXPECT_LT(std::abs(lightOf(luma[3], -10, 30) - wanted), 0.2F * before);
}

TEST(ChromaHalving, KeepsBrightnessWhereColoursStay)
{
    const Row blue = repeated(10);
    const Row red = repeated(-20);
    Row luma = repeated(5);
    keepLight({blue.data(), red.data()}, {blue.data(), red.data()}, width, luma.data());
    EXPECT_EQ(luma, repeated(5));
}

} // namespace
} // namespace lumora
