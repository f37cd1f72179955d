// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/row_reader.h"

#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::imageOf;
using test::Pixels;
using test::uniformPicture;

struct ReadRows
{
    RowFormat format;
    bool keepsProfileSpace;
    std::vector<std::uint8_t> bytes;
};

ReadRows read(const Image& image)
{
    auto rows = RowReader::open(image);
    if (!rows) throw std::runtime_error(rows.error().description);
    const auto components = rows->width() * rows->height() * rows->format().bands();
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(components));
    if (const Status status = rows->read(0, rows->height(), bytes.data()); !status)
        throw std::runtime_error(status.error().description);
    return {rows->format(), rows->keepsProfileSpace(), bytes};
}

// Higher than several strips, and no multiple of one.
TEST(RowReader, GivesEveryComponentAsItIs)
{
    const Pixels picture = test::corneredPicture(35, 201);
    const ReadRows rows = read(imageOf(picture));
    EXPECT_EQ(rows.format.model, ColorModel::rgb);
    EXPECT_FALSE(rows.format.hasAlpha);
    EXPECT_TRUE(rows.keepsProfileSpace);
    EXPECT_EQ(rows.bytes, picture.bytes);
}

TEST(RowReader, GivesTheRowsThatAreAskedFor)
{
    const Pixels picture = test::corneredPicture(35, 201);
    auto rows = RowReader::open(imageOf(picture));
    ASSERT_TRUE(rows);
    const auto some = rows->rows(70, 10);
    ASSERT_TRUE(some);
    const std::uint8_t* last = some->first + 9 * some->stride;
    EXPECT_TRUE(std::equal(last, last + 35 * 3, picture.bytes.begin() + 79 * 35 * 3));
}

TEST(RowReader, TellsWhatTheComponentsMean)
{
    EXPECT_EQ(read(imageOf(uniformPicture(2, 2, {7}))).format.model, ColorModel::gray);
    const ReadRows grayWithAlpha = read(imageOf(uniformPicture(2, 2, {7, 8})));
    EXPECT_EQ(grayWithAlpha.format.model, ColorModel::gray);
    EXPECT_TRUE(grayWithAlpha.format.hasAlpha);
    EXPECT_EQ(grayWithAlpha.format.bands(), 2);
    EXPECT_TRUE(read(imageOf(uniformPicture(2, 2, {1, 2, 3, 4}))).format.hasAlpha);
}

TEST(RowReader, LeavesTheAlphaOfInksOut)
{
    const Image ink(
        test::pictureOf(uniformPicture(1, 1, {1, 2, 3, 4, 5}), VIPS_INTERPRETATION_CMYK).release(), 1,
        ImageState::decoded);
    const ReadRows rows = read(ink);
    EXPECT_EQ(rows.format.model, ColorModel::cmyk);
    EXPECT_FALSE(rows.format.hasAlpha);
    EXPECT_EQ(rows.bytes, (std::vector<std::uint8_t>{1, 2, 3, 4}));
}

TEST(RowReader, ReducesDeepComponentsByTheExactInverseOfWidening)
{
    const Pixels picture = test::corneredPicture(9, 9);
    VipsImage* deep = nullptr;
    ASSERT_EQ(vips_cast(test::pictureOf(picture, VIPS_INTERPRETATION_RGB16).get(), &deep, VIPS_FORMAT_USHORT,
                        "shift", TRUE, nullptr),
              0);
    EXPECT_EQ(read(Image(deep, 1, ImageState::decoded)).bytes, picture.bytes);
}

TEST(RowReader, BringsOtherModelsToSrgbAndSaysSo)
{
    VipsImage* lab = nullptr;
    ASSERT_EQ(vips_colourspace(test::pictureOf(uniformPicture(2, 2, {200, 40, 90})).get(), &lab,
                               VIPS_INTERPRETATION_LAB, nullptr),
              0);
    const ReadRows rows = read(Image(lab, 1, ImageState::decoded));
    EXPECT_FALSE(rows.keepsProfileSpace);
    EXPECT_EQ(rows.format.model, ColorModel::rgb);
    ASSERT_EQ(rows.bytes.size(), 12U);
    EXPECT_NEAR(rows.bytes[0], 200, 1);
    EXPECT_NEAR(rows.bytes[1], 40, 1);
    EXPECT_NEAR(rows.bytes[2], 90, 1);
}

TEST(RowReader, FailsForDamagedRows)
{
    auto rows = RowReader::open(Image(test::damagedPicture(8, 8).release(), 1, ImageState::pending));
    ASSERT_TRUE(rows);
    const auto some = rows->rows(0, 8);
    ASSERT_FALSE(some);
    EXPECT_NE(some.error().description.find("damaged"), std::string::npos) << some.error().description;
    std::vector<std::uint8_t> bytes(8 * 8 * 3);
    EXPECT_FALSE(rows->read(0, 8, bytes.data()));
}

} // namespace
} // namespace lumora
