// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflate_pieces.h"

#include "tests/platform/formats/png/noise.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumora {
namespace {

using Data = std::vector<std::uint8_t>;

void add(Data& data, test::Noise& noise, std::size_t bytes)
{
    for (std::size_t i = 0; i < bytes; ++i)
        data.push_back(static_cast<std::uint8_t>(noise.next()));
}

Data streamOf(const PixelRows& rows)
{
    Data stream;
    const auto status = deflateSideBySide(rows, [&](ByteSpan piece) -> Status {
        stream.insert(stream.end(), piece.begin(), piece.end());
        return Done{};
    });
    EXPECT_TRUE(status);
    return stream;
}

bool isTurnedBack(const Data& stream, const Data& data)
{
    Data inflated(data.size() + 1);
    auto length = uLongf(inflated.size());
    if (uncompress(inflated.data(), &length, stream.data(), uLong(stream.size())) != Z_OK) return false;
    inflated.resize(length);
    return inflated == data;
}

// What zlib makes of it at its best.
std::size_t usualBytes(const Data& data)
{
    Data stream(compressBound(uLong(data.size())));
    auto length = uLongf(stream.size());
    EXPECT_EQ(compress2(stream.data(), &length, data.data(), uLong(data.size()), Z_BEST_COMPRESSION), Z_OK);
    return length;
}

// Rows as drawings have them: flat, with a pattern, with noise, and like the row above but for a few pixels.
Data drawing(std::size_t rowBytes, std::size_t step, std::size_t height)
{
    test::Noise noise;
    Data data;
    for (std::size_t y = 0; y < height; ++y) {
        data.push_back(static_cast<std::uint8_t>(y % 5));
        for (std::size_t i = 1; i < rowBytes; ++i) {
            const bool isLikeAbove = y % 4 == 3 && noise.next() % 50 > 0;
            if (isLikeAbove)
                data.push_back(data[data.size() - rowBytes]);
            else if (y % 4 == 1)
                data.push_back(static_cast<std::uint8_t>((i - 1) / step * 7 % 256));
            else
                data.push_back(y % 16 == 2 ? static_cast<std::uint8_t>(noise.next()) : std::uint8_t{9});
        }
    }
    return data;
}

TEST(DeflatePieces, AreWhatInflationTurnsBackForPixelsOfAnySize)
{
    for (const std::size_t step : {1U, 2U, 3U, 4U, 6U, 8U}) {
        for (const std::size_t width : {1U, 2U, 5U, 85U, 700U, 12000U}) {
            for (const std::size_t height : {1U, 2U, 97U}) {
                const std::size_t rowBytes = 1 + width * step;
                const Data data = drawing(rowBytes, step, height);
                EXPECT_TRUE(isTurnedBack(streamOf({data, rowBytes, step}), data))
                    << step << ' ' << width << ' ' << height;
            }
        }
    }
}

TEST(DeflatePieces, AreWhatInflationTurnsBackForFewBytes)
{
    const Data data = drawing(301, 3, 2);
    for (std::size_t size = 1; size < 300; ++size) {
        const Data some(data.begin() + 250, data.begin() + 250 + static_cast<std::ptrdiff_t>(size));
        EXPECT_TRUE(isTurnedBack(streamOf({some}), some)) << size;
        EXPECT_TRUE(isTurnedBack(streamOf({some, 10, 3}), some)) << size;
    }
}

TEST(DeflatePieces, TellMatchesOfEveryLength)
{
    test::Noise noise;
    Data data;
    add(data, noise, 5000);
    for (std::ptrdiff_t length = 3; length < 600; ++length) {
        const Data again(data.end() - 2000, data.end() - 2000 + length);
        data.insert(data.end(), again.begin(), again.end());
        add(data, noise, 2);
    }
    EXPECT_TRUE(isTurnedBack(streamOf({data}), data));
}

TEST(DeflatePieces, TellMatchesOfAnyDistance)
{
    test::Noise noise;
    Data data;
    add(data, noise, 70000);
    for (std::ptrdiff_t distance = 1; distance < 34000; distance += 1 + distance / 50) {
        for (int i = 0; i < 40; ++i)
            data.push_back(*(data.end() - distance));
        add(data, noise, 2);
    }
    const Data stream = streamOf({data});
    EXPECT_TRUE(isTurnedBack(stream, data));
    EXPECT_LT(stream.size(), 80000U);
}

// What is most of a picture that was drawn costs nearly nothing.
TEST(DeflatePieces, SaveAllButTheFirstOfRowsThatAreEqual)
{
    test::Noise noise;
    constexpr std::size_t rowBytes = 3001;
    Data row;
    add(row, noise, rowBytes);
    Data data;
    for (int y = 0; y < 1000; ++y)
        data.insert(data.end(), row.begin(), row.end());
    EXPECT_LT(streamOf({data, rowBytes, 3}).size(), rowBytes + std::size_t{1000} * 24);
}

// A megabyte of the same is the longest run that is looked at; a longest match of it takes two bits.
TEST(DeflatePieces, TakeNextToNothingForOneColor)
{
    for (const std::size_t step : {1U, 3U}) {
        Data data;
        for (std::size_t i = 0; i < std::size_t{3} << 20U; ++i)
            data.push_back(static_cast<std::uint8_t>(i % step));
        const Data stream = streamOf({data, 1 + data.size(), step});
        EXPECT_TRUE(isTurnedBack(stream, data));
        EXPECT_LT(stream.size(), data.size() / longestMatch / 4 + 200) << step;
    }
}

// Ellipses of one color each, one above the other, on flat ground.
Data shapes()
{
    constexpr unsigned width = 1500;
    constexpr unsigned height = 1400;
    constexpr std::size_t step = 3;
    const std::size_t rowBytes = 1 + width * step;
    test::Noise noise;
    Data data(rowBytes * height, 200);
    for (int shape = 0; shape < 60; ++shape) {
        const double x = noise.next() % width;
        const double y = noise.next() % height;
        const double across = 20 + noise.next() % 300;
        const double down = 20 + noise.next() % 200;
        Data color;
        add(color, noise, step);
        for (std::size_t row = 0; row < height; ++row) {
            data[row * rowBytes] = 0;
            const double above = (static_cast<double>(row) - y) / down;
            const double half = across * std::sqrt(std::max(0.0, 1 - above * above));
            const auto begin = static_cast<std::size_t>(std::max(0.0, x - half));
            const std::size_t end = std::min<std::size_t>(width, static_cast<std::size_t>(x + half));
            for (std::size_t pixel = begin; pixel < end; ++pixel)
                std::ranges::copy(color, &data[row * rowBytes + 1 + pixel * step]);
        }
    }
    return data;
}

// Where the longest match is nearly everywhere, what counts is where each begins and how seldom codes are
// described.
TEST(DeflatePieces, TakeLittleForFlatShapes)
{
    const Data data = shapes();
    const Data stream = streamOf({data, 4501, 3});
    EXPECT_TRUE(isTurnedBack(stream, data));
    EXPECT_LT(stream.size(), usualBytes(data));
}

// By ideal codes, of one bit and of 1.6 for a single byte, no match would pay; real ones have two.
TEST(DeflatePieces, TakeNoMoreForNoiseOfFewValuesThanOthers)
{
    for (const unsigned values : {2U, 3U}) {
        test::Noise noise;
        Data data;
        for (int i = 0; i < 500000; ++i)
            data.push_back(static_cast<std::uint8_t>(noise.next() % values * 40));
        const Data stream = streamOf({data, 1001});
        EXPECT_TRUE(isTurnedBack(stream, data));
        EXPECT_LT(stream.size(), usualBytes(data)) << values;
    }
}

// Each part of a picture has its own colors.
TEST(DeflatePieces, HaveCodesForEachPart)
{
    test::Noise noise;
    Data data;
    for (int i = 0; i < 200000; ++i)
        data.push_back(static_cast<std::uint8_t>(noise.next() % 8 + (i < 100000 ? 0 : 100)));
    EXPECT_LT(streamOf({data}).size(), data.size() * 33 / 80);
}

// The second piece of data repeats what lies before it.
TEST(DeflatePieces, KnowWhatLiesBeforeThem)
{
    constexpr std::size_t period = 30000;
    test::Noise noise;
    Data data;
    add(data, noise, period);
    while (data.size() < std::size_t{17} << 20U)
        data.insert(data.end(), data.begin(), data.begin() + period);
    const Data stream = streamOf({data});
    EXPECT_TRUE(isTurnedBack(stream, data));
    const Data first(data.begin(), data.begin() + (std::ptrdiff_t{4} << 20U));
    EXPECT_LT(stream.size(), 4 * streamOf({first}).size() - 2 * period);
}

} // namespace
} // namespace lumora
