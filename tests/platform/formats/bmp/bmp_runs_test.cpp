// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_layout.h"

#include "tests/platform/formats/bmp/bmp_cases.h"

#include <algorithm>

namespace lumora {
namespace {

using namespace test;

class RunLengthBmp : public testing::TestWithParam<Readable>
{
};

TEST_P(RunLengthBmp, GivesItsPictureFromTheTop)
{
    expectPicture(GetParam());
}

TEST_P(RunLengthBmp, FailsForEveryBeginningOfItsHeader)
{
    expectNoPictureOfABeginning(GetParam());
}

const std::vector<Readable> readables{
    {"Runs8", indexed(8, palette, {1, 3, 1, 4, 0, 0, 1, 1, 1, 2, 0, 1}, 1), 3, picture},
    {"Runs8Copied", indexed(8, palette, {1, 3, 1, 4, 0, 0, 1, 1, 1, 2, 0, 0, 0, 1}, 1), 3, picture},
    {"Runs8WithoutEndMark", indexed(8, palette, {1, 3, 1, 4, 0, 0, 1, 1, 1, 2}, 1), 3, picture},
    {"Runs8WithPadding", indexed(8, palette, {1, 3, 1, 4, 2, 0, 0, 0, 1, 1, 1, 2, 2, 9, 0, 1}, 1), 3,
     picture},
    {"Runs8WithPaddingWithoutEndMark", indexed(8, palette, {1, 3, 3, 4, 0, 0, 0, 3, 1, 2, 0, 0}, 1), 3,
     picture},
    {"Runs8UnderMasksWithoutUse",
     {.headerSize = 124,
      .bits = 8,
      .compression = 1,
      .colorsUsed = 5,
      .masks = maskRgba,
      .palette = palette,
      .pixels = {1, 3, 1, 4, 0, 0, 1, 1, 1, 2, 0, 1}},
     3,
     picture},
    {"Runs8Jump", indexed(8, twoColors, {0, 2, 1, 0, 1, 1, 0, 0, 1, 1, 0, 1}, 1), 3, checker},
    {"Runs4", indexed(4, palette, {2, 0x34, 0, 0, 2, 0x12, 0, 1}, 2), 3, picture},
    {"Runs4WithPadding", indexed(4, palette, {2, 0x34, 6, 0, 0, 0, 2, 0x12, 6, 0, 0, 1}, 2), 3, picture},
};

INSTANTIATE_TEST_SUITE_P(, RunLengthBmp, testing::ValuesIn(readables), byName);

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

class DamagedRuns : public testing::TestWithParam<Unreadable>
{
};

TEST_P(DamagedRuns, Fails)
{
    EXPECT_FALSE(decodeBmp(GetParam().bmp.file()));
}

const std::vector<Unreadable> unreadables{
    {"RunColourBeyondThePalette", indexed(8, palette, {2, 5, 0, 0, 2, 1, 0, 1}, 1)},
    {"RunBeyondTheRow", indexed(8, palette, {5, 1, 0, 1}, 1)},
    {"RunBeyondTheRowOfNibbles", indexed(4, palette, {9, 1, 0, 1}, 2)},
    {"RunAboveThePicture", indexed(8, palette, {0, 0, 0, 0, 1, 1, 0, 1}, 1)},
    {"CopyBeyondTheRow", indexed(8, palette, {0, 5, 1, 1, 1, 1, 1, 0, 0, 1}, 1)},
    {"CopyBeyondTheFile", indexed(4, palette, {0, 3, 0x11}, 2)},
    {"JumpOutOfThePicture", indexed(8, palette, {0, 2, 3, 0, 0, 1}, 1)},
    {"JumpCutOff", indexed(8, palette, {0, 2, 1}, 1)},
    {"EndlessRows", indexed(8, palette, {0, 0, 0, 0, 0, 0, 0, 1}, 1)},
    {"RunsCutOff", indexed(8, palette, {2, 1, 0, 0, 1}, 1)},
};

INSTANTIATE_TEST_SUITE_P(, DamagedRuns, testing::ValuesIn(unreadables), byName);

} // namespace
} // namespace lumora
