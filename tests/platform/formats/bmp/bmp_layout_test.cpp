// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_layout.h"

#include "tests/platform/formats/bmp/bmp_cases.h"

namespace lumora {
namespace {

using namespace test;

class BmpWithAWrongHeader : public testing::TestWithParam<Unreadable>
{
};

TEST_P(BmpWithAWrongHeader, Fails)
{
    EXPECT_FALSE(decodeBmp(GetParam().bmp.file()));
}

const std::vector<Unreadable> unreadables{
    {"UnknownHeader", {.headerSize = 41, .pixels = triples}},
    {"NoWidth", {.width = 0, .pixels = triples}},
    {"NegativeWidth", {.width = -2, .pixels = triples}},
    {"NoHeight", {.height = 0, .pixels = triples}},
    {"LowestHeight", {.height = INT32_MIN, .pixels = triples}},
    {"ThreeBits", {.bits = 3, .pixels = triples}},
    {"NoBits", {.bits = 0, .pixels = triples}},
    {"JpegInside", {.compression = 4, .pixels = triples}},
    {"PngInside", {.compression = 5, .pixels = triples}},
    {"UnknownCoding", {.compression = 99, .pixels = triples}},
    {"Os2HuffmanCoding",
     {.headerSize = 64, .bits = 1, .compression = 3, .palette = twoColors, .pixels = triples}},
    {"RunsOf24Bits", {.compression = 1, .pixels = triples}},
    {"MasksOf24Bits", {.compression = 3, .masks = maskRgb, .pixels = triples}},
    {"MaskWithAGap", masked(40, 32, {0xFF00FF, 0xFF00, 0xFF}, bgra)},
    {"PixelsBeforeTheHeaderEnds", {.pixels = triples, .pixelPosition = 20}},
    {"PixelsBeyondTheFile", {.pixels = triples, .pixelPosition = 100'000}},
    {"NoPalette", {.bits = 8, .pixels = {0, 0, 0, 0, 0, 0, 0, 0}}},
};

INSTANTIATE_TEST_SUITE_P(, BmpWithAWrongHeader, testing::ValuesIn(unreadables), byName);

TEST(BmpProfile, IsTheEmbeddedOne)
{
    BmpBuilder bmp{.headerSize = 124, .pixels = triples};
    std::vector<std::byte> file = bmp.file();
    const auto set = [&](std::size_t at, std::uint32_t value) {
        for (std::size_t i = 0; i < 4; ++i)
            file[14 + at + i] = std::byte((value >> (8 * i)) & 0xFFU);
    };
    set(56, 0x4D424544);
    set(112, static_cast<std::uint32_t>(file.size() - 14));
    set(116, 3);
    for (const char letter : {'i', 'c', 'c'})
        file.push_back(std::byte(letter));
    const auto header = readBmpHeader(file);
    ASSERT_TRUE(header);
    ASSERT_EQ(header->iccProfile.size(), 3U);
    EXPECT_EQ(header->iccProfile[2], std::byte{'c'});

    set(116, 4); // one byte more than the file has
    EXPECT_TRUE(readBmpHeader(file)->iccProfile.empty());
}

TEST(BmpLimit, IsNamedAndCheckedBeforeAnythingIsAllocated)
{
    const BmpBuilder over{.width = 30'000, .height = 10'001, .bits = 8, .compression = 1, .palette = palette};
    const auto header = readBmpHeader(over.file());
    ASSERT_FALSE(header);
    EXPECT_EQ(header.error().description, "more than 300 megapixels");
    const BmpBuilder most{.width = 30'000, .height = 10'000, .bits = 8, .compression = 1, .palette = palette};
    EXPECT_TRUE(readBmpHeader(most.file()));
    const BmpBuilder huge{.width = INT32_MAX, .height = INT32_MAX, .bits = 32};
    EXPECT_FALSE(readBmpHeader(huge.file()));
}

TEST(BmpLayout, FindsThePixelsBehindThePaletteAndTheDirectionOfTheRows)
{
    BmpBuilder bmp = indexed(8, palette, {3, 4, 0, 0, 1, 2, 0, 0});
    const std::vector<std::byte> file = bmp.file();
    const auto layout = readBmpLayout(file);
    ASSERT_TRUE(layout);
    EXPECT_EQ(valuesOf(layout->pixels), (std::vector<int>{3, 4, 0, 0, 1, 2, 0, 0}));
    EXPECT_EQ(layout->palette.size(), palette.size());
    EXPECT_EQ(layout->palette[1].red, std::byte{255});
    EXPECT_FALSE(layout->isTopDown);
    EXPECT_EQ(layout->coding, BmpCoding::plain);

    bmp.height = -2;
    const auto topDown = readBmpLayout(bmp.file());
    ASSERT_TRUE(topDown);
    EXPECT_TRUE(topDown->isTopDown);
    EXPECT_EQ(topDown->header.height, 2);
}

// Some writers give the number of colours and others leave it out.
TEST(BmpLayout, TakesNoMoreColoursThanFitBeforeThePixels)
{
    BmpBuilder bmp = indexed(4, palette, {0x34, 0, 0, 0, 0x12, 0, 0, 0});
    for (const std::uint32_t claimed : {0U, 5U, 16U, 4'000'000'000U}) {
        bmp.colorsUsed = claimed;
        const auto layout = readBmpLayout(bmp.file());
        ASSERT_TRUE(layout) << claimed;
        EXPECT_EQ(layout->palette.size(), 5U) << claimed;
    }
}

} // namespace
} // namespace lumora
