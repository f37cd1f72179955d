// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_codec.h"

#include "formats/image_source.h"
#include "tests/platform/formats/bmp/bmp_builder.h"

#include <gtest/gtest.h>

#include <string>

namespace lumora {
namespace {

using test::BmpBuilder;

struct Readable
{
    const char* name;
    BmpBuilder bmp;
    int channels;
    std::vector<int> rows; // of the 2 x 2 picture, from the top
};

void PrintTo(const Readable& c, std::ostream* out)
{
    *out << c.name;
}

// The picture of most cases: red and green above blue and white.
const std::vector<int> picture{255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
const std::vector<std::uint32_t> palette{0x000000, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFFFF};
const std::vector<std::uint32_t> twoColors{0x102030, 0xFFFFFF};
const std::vector<int> checker{255, 255, 255, 16, 32, 48, 16, 32, 48, 255, 255, 255};
const std::vector<std::uint8_t> triples{255, 0, 0, 255, 255, 255, 0, 0, 0, 0, 255, 0, 255, 0, 0, 0};

BmpBuilder core(std::uint16_t bits, std::vector<std::uint32_t> colors, std::vector<std::uint8_t> pixels)
{
    return {.headerSize = 12, .bits = bits, .palette = std::move(colors), .pixels = std::move(pixels)};
}

BmpBuilder indexed(std::uint16_t bits, std::vector<std::uint32_t> colors, std::vector<std::uint8_t> pixels,
                   std::uint32_t compression = 0)
{
    const auto used = static_cast<std::uint32_t>(colors.size());
    return {.bits = bits,
            .compression = compression,
            .colorsUsed = used,
            .palette = std::move(colors),
            .pixels = std::move(pixels)};
}

BmpBuilder masked(std::uint32_t headerSize, std::uint16_t bits, std::vector<std::uint32_t> masks,
                  std::vector<std::uint8_t> pixels, std::uint32_t compression = 3)
{
    return {.headerSize = headerSize,
            .bits = bits,
            .compression = compression,
            .masks = std::move(masks),
            .pixels = std::move(pixels)};
}

const std::vector<std::uint8_t> bgra{255, 0, 0, 0, 255, 255, 255, 64, 0, 0, 255, 128, 0, 255, 0, 255};
const std::vector<int> pictureWithAlpha{255, 0, 0, 128, 0, 255, 0, 255, 0, 0, 255, 0, 255, 255, 255, 64};
const std::vector<std::uint32_t> maskRgb{0xFF0000, 0xFF00, 0xFF};
const std::vector<std::uint32_t> maskRgba{0xFF0000, 0xFF00, 0xFF, 0xFF000000};

class ReadableBmp : public testing::TestWithParam<Readable>
{
};

TEST_P(ReadableBmp, GivesItsPictureFromTheTop)
{
    const std::vector<std::byte> file = GetParam().bmp.file();
    const auto header = readBmpHeader(file);
    ASSERT_TRUE(header) << header.error().description;
    EXPECT_EQ(header->width, 2);
    EXPECT_EQ(header->height, 2);
    EXPECT_EQ(header->bitsPerPixel, GetParam().bmp.bits);
    EXPECT_EQ(header->channels(), GetParam().channels);
    const auto rows = decodeBmp(file);
    ASSERT_TRUE(rows) << rows.error().description;
    std::vector<int> values;
    for (const std::byte value : *rows)
        values.push_back(std::to_integer<int>(value));
    EXPECT_EQ(values, GetParam().rows);
}

const std::vector<Readable> readables{
    {"Core24Bits", core(24, {}, triples), 3, picture},
    {"Core8Bits", core(8, palette, {3, 4, 0, 0, 1, 2, 0, 0}), 3, picture},
    {"Core4Bits", core(4, palette, {0x34, 0, 0, 0, 0x12, 0, 0, 0}), 3, picture},
    {"Core1Bit", core(1, twoColors, {0x40, 0, 0, 0, 0x80, 0, 0, 0}), 3, checker},
    {"Os2Short24Bits", {.headerSize = 16, .pixels = triples}, 3, picture},
    {"Os2Long24Bits", {.headerSize = 64, .pixels = triples}, 3, picture},
    {"Windows24Bits", {.pixels = triples}, 3, picture},
    {"Version4With24Bits", {.headerSize = 108, .pixels = triples}, 3, picture},
    {"Version5With24Bits", {.headerSize = 124, .pixels = triples}, 3, picture},
    {"TopDown", {.height = -2, .pixels = {0, 0, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255, 255}}, 3, picture},
    {"LastPaddingMissing", {.pixels = {triples.begin(), triples.end() - 2}}, 3, picture},
    {"Indexed8Bits", indexed(8, palette, {3, 4, 0, 0, 1, 2, 0, 0}), 3, picture},
    {"Indexed4Bits", indexed(4, palette, {0x34, 0, 0, 0, 0x12, 0, 0, 0}), 3, picture},
    {"Indexed2Bits", indexed(2, twoColors, {0x10, 0, 0, 0, 0x40, 0, 0, 0}), 3, checker},
    {"Indexed1Bit", indexed(1, twoColors, {0x40, 0, 0, 0, 0x80, 0, 0, 0}), 3, checker},
    {"Plain16BitsAre555", {.bits = 16, .pixels = {0x1F, 0, 0xFF, 0x7F, 0, 0x7C, 0xE0, 0x03}}, 3, picture},
    {"Masked565", masked(40, 16, {0xF800, 0x07E0, 0x001F}, {0x1F, 0, 0xFF, 0xFF, 0, 0xF8, 0xE0, 0x07}), 3,
     picture},
    {"Masked4444WithAlpha",
     masked(56, 16, {0x0F00, 0x00F0, 0x000F, 0xF000}, {0x0F, 0x00, 0xFF, 0x4F, 0x00, 0x8F, 0xF0, 0xF0}),
     4,
     {255, 0, 0, 136, 0, 255, 0, 255, 0, 0, 255, 0, 255, 255, 255, 68}},
    {"Masked10BitsAChannel",
     masked(40, 32, {0x3FF00000, 0x000FFC00, 0x000003FF},
            {0xFF, 3, 0, 0, 0xFF, 0xFF, 0xFF, 0x3F, 0, 0, 0xF0, 0x3F, 0, 0xFC, 0x0F, 0}),
     3, picture},
    {"Plain32BitsAreOpaque", {.bits = 32, .pixels = bgra}, 3, picture},
    {"Masked32BitsWithoutAlphaAreOpaque", masked(40, 32, maskRgb, bgra), 3, picture},
    {"Version2HeaderHoldsThreeMasks", masked(52, 32, maskRgb, bgra), 3, picture},
    {"Version3HeaderHoldsFourMasks", masked(56, 32, maskRgba, bgra), 4, pictureWithAlpha},
    {"FourLooseMasks", masked(40, 32, maskRgba, bgra, 6), 4, pictureWithAlpha},
    {"Version4WithAlpha", masked(108, 32, maskRgba, bgra), 4, pictureWithAlpha},
    {"Version5WithAlpha", masked(124, 32, maskRgba, bgra), 4, pictureWithAlpha},
    {"Version4With32PlainBitsIsOpaque", masked(108, 32, maskRgba, bgra, 0), 3, picture},
    {"AMaskOfNothingIsBlack",
     masked(40, 32, {0, 0xFF00, 0xFF}, bgra),
     3,
     {0, 0, 0, 0, 255, 0, 0, 0, 255, 0, 255, 255}},
    {"Runs8", indexed(8, palette, {1, 3, 1, 4, 0, 0, 1, 1, 1, 2, 0, 1}, 1), 3, picture},
    {"Runs8Copied", indexed(8, palette, {1, 3, 1, 4, 0, 0, 1, 1, 1, 2, 0, 0, 0, 1}, 1), 3, picture},
    {"Runs8WithoutEndMark", indexed(8, palette, {1, 3, 1, 4, 0, 0, 1, 1, 1, 2}, 1), 3, picture},
    {"Runs8Jump", indexed(8, twoColors, {0, 2, 1, 0, 1, 1, 0, 0, 1, 1, 0, 1}, 1), 3, checker},
    {"Runs4", indexed(4, palette, {2, 0x34, 0, 0, 2, 0x12, 0, 1}, 2), 3, picture},
};

std::string nameOf(const testing::TestParamInfo<Readable>& test)
{
    return test.param.name;
}

INSTANTIATE_TEST_SUITE_P(, ReadableBmp, testing::ValuesIn(readables), nameOf);

TEST(BmpRuns, CopyStretchesOfPixelsPaddedToWords)
{
    BmpBuilder bmp = indexed(8, palette, {0, 3, 1, 2, 3, 0, 1, 4, 0, 1}, 1);
    bmp.width = 4;
    bmp.height = 1;
    const auto rows = decodeBmp(bmp.file());
    ASSERT_TRUE(rows) << rows.error().description;
    EXPECT_EQ((*rows)[0], std::byte{255});
    EXPECT_EQ((*rows)[8], std::byte{255});
    EXPECT_EQ((*rows)[9], std::byte{255});
}

TEST(BmpRuns, CopyStretchesOfNibblesPaddedToWords)
{
    BmpBuilder bmp = indexed(4, palette, {0, 5, 0x12, 0x34, 0x10, 0, 1, 0x20, 0, 1}, 2);
    bmp.width = 6;
    bmp.height = 1;
    const auto rows = decodeBmp(bmp.file());
    ASSERT_TRUE(rows) << rows.error().description;
    const std::vector<std::byte> red{std::byte{255}, std::byte{0}, std::byte{0}};
    EXPECT_TRUE(std::equal(red.begin(), red.end(), rows->begin()));
    EXPECT_TRUE(std::equal(red.begin(), red.end(), rows->begin() + 12));
    EXPECT_EQ((*rows)[16], std::byte{255});
}

TEST(BmpRuns, AlternateBetweenTheTwoColoursOfAByte)
{
    BmpBuilder bmp = indexed(4, palette, {5, 0x12, 0, 1}, 2);
    bmp.width = 5;
    bmp.height = 1;
    const auto rows = decodeBmp(bmp.file());
    ASSERT_TRUE(rows) << rows.error().description;
    for (std::size_t x = 0; x < 5; ++x)
        EXPECT_EQ((*rows)[3 * x + x % 2], std::byte{255}) << x;
}

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

struct Unreadable
{
    const char* name;
    BmpBuilder bmp;
};

void PrintTo(const Unreadable& c, std::ostream* out)
{
    *out << c.name;
}

class UnreadableBmp : public testing::TestWithParam<Unreadable>
{
};

TEST_P(UnreadableBmp, Fails)
{
    EXPECT_FALSE(decodeBmp(GetParam().bmp.file()));
}

const std::vector<Unreadable> unreadables{
    {"UnknownHeader", {.headerSize = 41, .pixels = triples}},
    {"NoWidth", {.width = 0, .pixels = triples}},
    {"NegativeWidth", {.width = -2, .pixels = triples}},
    {"NoHeight", {.height = 0, .pixels = triples}},
    {"LowestHeight", {.height = INT32_MIN, .pixels = triples}},
    {"PixelsCutOff", {.pixels = {triples.begin(), triples.end() - 3}}},
    {"NoPixels", {.pixels = {}}},
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
    {"ColourBeyondThePalette", indexed(8, palette, {3, 4, 0, 0, 1, 5, 0, 0})},
    {"RunColourBeyondThePalette", indexed(8, palette, {2, 5, 0, 0, 2, 1, 0, 1}, 1)},
    {"RunBeyondTheRow", indexed(8, palette, {3, 1, 0, 1}, 1)},
    {"RunAboveThePicture", indexed(8, palette, {0, 0, 0, 0, 1, 1, 0, 1}, 1)},
    {"CopyBeyondTheRow", indexed(8, palette, {0, 3, 1, 1, 1, 0, 0, 1}, 1)},
    {"CopyBeyondTheFile", indexed(4, palette, {0, 3, 0x11}, 2)},
    {"JumpOutOfThePicture", indexed(8, palette, {0, 2, 3, 0, 0, 1}, 1)},
    {"JumpCutOff", indexed(8, palette, {0, 2, 1}, 1)},
    {"EndlessRows", indexed(8, palette, {0, 0, 0, 0, 0, 0, 0, 1}, 1)},
    {"RunsCutOff", indexed(8, palette, {2, 1, 0, 0, 1}, 1)},
};

INSTANTIATE_TEST_SUITE_P(, UnreadableBmp, testing::ValuesIn(unreadables),
                         [](const auto& test) { return test.param.name; });

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

TEST(BmpReader, FailsOnEveryBeginningOfAFile)
{
    for (const Readable& readable : readables) {
        const std::vector<std::byte> file = readable.bmp.file();
        const std::size_t headerEnd = 14 + readable.bmp.headerSize;
        for (std::size_t size = 0; size < headerEnd; ++size) {
            EXPECT_FALSE(decodeBmp(std::span(file).first(size))) << readable.name << " " << size;
        }
    }
}

} // namespace
} // namespace lumora
