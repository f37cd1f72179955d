// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_codec.h"

#include "tests/platform/formats/bmp/bmp_cases.h"

namespace lumora {
namespace {

using namespace test;

class ReadableBmp : public testing::TestWithParam<Readable>
{
};

TEST_P(ReadableBmp, GivesItsPictureFromTheTop)
{
    expectPicture(GetParam());
}

TEST_P(ReadableBmp, FailsForEveryBeginningOfItsHeader)
{
    expectNoPictureOfABeginning(GetParam());
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
};

INSTANTIATE_TEST_SUITE_P(, ReadableBmp, testing::ValuesIn(readables), byName);

class UnreadableBmp : public testing::TestWithParam<Unreadable>
{
};

TEST_P(UnreadableBmp, Fails)
{
    EXPECT_FALSE(decodeBmp(GetParam().bmp.file()));
}

const std::vector<Unreadable> unreadables{
    {"PixelsCutOff", {.pixels = {triples.begin(), triples.end() - 3}}},
    {"NoPixels", {.pixels = {}}},
    {"ColourBeyondThePalette", indexed(8, palette, {3, 4, 0, 0, 1, 5, 0, 0})},
};

INSTANTIATE_TEST_SUITE_P(, UnreadableBmp, testing::ValuesIn(unreadables), byName);

} // namespace
} // namespace lumora
