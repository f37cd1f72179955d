// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflation.h"

#include "tests/platform/formats/png/noise.h"

#include "system/side_by_side.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <vector>

namespace lumora {
namespace {

using Data = std::vector<std::uint8_t>;

// Noise, a run, and the noise again.
Data someData(std::size_t size)
{
    Data data;
    test::Noise values;
    for (std::size_t i = 0; i < size / 3; ++i)
        data.push_back(static_cast<std::uint8_t>(values.next()));
    data.insert(data.end(), size / 3, 7);
    const Data noise(data.begin(), data.begin() + static_cast<std::ptrdiff_t>(size / 3));
    data.insert(data.end(), noise.begin(), noise.end());
    return data;
}

constexpr std::array everySearch{Search::none, Search::runs, Search::trial, Search::usual, Search::thorough};

Data streamOf(const PixelRows& rows, Search search)
{
    Data stream;
    const auto status = deflate(rows, search, [&](ByteSpan piece) -> Status {
        stream.insert(stream.end(), piece.begin(), piece.end());
        return Done{};
    });
    EXPECT_TRUE(status);
    return stream;
}

Data inflated(const Data& stream, std::size_t size)
{
    Data data(size + 1);
    auto length = uLongf(data.size());
    EXPECT_EQ(uncompress(data.data(), &length, stream.data(), uLong(stream.size())), Z_OK);
    data.resize(length);
    return data;
}

TEST(Deflation, IsWhatInflationTurnsBack)
{
    for (const Search search : everySearch) {
        for (const std::size_t size : {0U, 3U, 3U << 10U, 3U << 18U, 3U << 20U}) {
            const Data data = someData(size);
            const Data stream = streamOf({data}, search);
            EXPECT_TRUE(inflated(stream, size) == data) << static_cast<int>(search) << ' ' << size;
            EXPECT_EQ(deflatedSize({data}, search), stream.size());
        }
    }
}

TEST(Deflation, FindsWhatItIsToldToLookFor)
{
    const Data data = someData(3U << 12U);
    const std::size_t codes = deflatedSize({data}, Search::none);
    const std::size_t runs = deflatedSize({data}, Search::runs);
    EXPECT_LT(runs, codes);
    EXPECT_LT(deflatedSize({data}, Search::usual), runs - runs / 3);
}

// Bytes of few values in no order, where accidental repetitions are hardly shorter than codes.
TEST(Deflation, IsNotMisledByRepetitionsThatSaveNothing)
{
    for (const unsigned values : {3U, 4U, 20U, 256U}) {
        Data data;
        test::Noise noise;
        for (int i = 0; i < 600000; ++i)
            data.push_back(static_cast<std::uint8_t>(noise.next() % values));
        const std::size_t codes = deflatedSize({data}, Search::none);
        EXPECT_LT(deflatedSize({data, 6001, 3}, Search::usual), codes + codes / 500) << values;
    }
}

// Long data is compressed in pieces, whose ends lie at any bit.
TEST(Deflation, IsTheSameOneStreamHoweverManyProcessorsWork)
{
    constexpr std::size_t size = std::size_t{45} << 20U;
    const Data data = someData(size);
    const Data alone = streamOf({data}, Search::usual);
    EXPECT_TRUE(inflated(alone, size) == data);
    useProcessors(3);
    EXPECT_TRUE(streamOf({data}, Search::usual) == alone);
    useProcessors(1);
}

// What is huge never lies in memory a second time where pieces will do.
TEST(Deflation, ComesInPiecesWhereItCan)
{
    const Data data = someData(3U << 20U);
    std::size_t longest = 0;
    const auto status = deflate({data}, Search::runs, [&](ByteSpan piece) -> Status {
        longest = std::max(longest, piece.size());
        return Done{};
    });
    ASSERT_TRUE(status);
    EXPECT_LT(longest, data.size() / 4);
}

TEST(Deflation, EndsWhenItsTakerFails)
{
    const Data data = someData(3U << 20U);
    for (const Search search : everySearch) {
        int pieces = 0;
        const auto status = deflate({data}, search, [&](ByteSpan) -> Status {
            ++pieces;
            return Error{"full"};
        });
        ASSERT_FALSE(status);
        EXPECT_EQ(status.error().description, "full");
        EXPECT_EQ(pieces, 1);
    }
}

} // namespace
} // namespace lumora
