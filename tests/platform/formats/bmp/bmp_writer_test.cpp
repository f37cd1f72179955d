// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/encoded_bmp.h"

#include "bmp/little_endian.h"
#include "types/format.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

std::vector<std::byte> ramp(int width, int height, int channels)
{
    std::vector<std::byte> rows;
    for (int i = 0; i < width * height * channels; ++i)
        rows.push_back(static_cast<std::byte>(i * 37));
    return rows;
}

// Widths with every padding.
class BmpWriter : public testing::TestWithParam<int>
{
};

TEST_P(BmpWriter, KeepsRgb)
{
    const auto rows = ramp(GetParam(), 3, 3);
    const auto file = test::encodedBmp(GetParam(), 3, 3, rows);
    const auto header = readBmpHeader(file);
    ASSERT_TRUE(header) << header.error().description;
    EXPECT_EQ(header->bitsPerPixel, 24);
    EXPECT_EQ(*decodeBmp(file), rows);
}

TEST_P(BmpWriter, KeepsRgbWithAlpha)
{
    const auto rows = ramp(GetParam(), 3, 4);
    const auto file = test::encodedBmp(GetParam(), 3, 4, rows);
    const auto header = readBmpHeader(file);
    ASSERT_TRUE(header) << header.error().description;
    EXPECT_EQ(header->bitsPerPixel, 32);
    EXPECT_TRUE(header->hasAlpha);
    EXPECT_EQ(*decodeBmp(file), rows);
}

TEST_P(BmpWriter, KeepsGreyInOneByteAPixel)
{
    const auto rows = ramp(GetParam(), 3, 1);
    const auto file = test::encodedBmp(GetParam(), 3, 1, rows);
    const auto header = readBmpHeader(file);
    ASSERT_TRUE(header) << header.error().description;
    EXPECT_EQ(header->bitsPerPixel, 8);
    const auto decoded = decodeBmp(file);
    ASSERT_TRUE(decoded);
    for (std::size_t i = 0; i < decoded->size(); ++i)
        EXPECT_EQ((*decoded)[i], rows[i / 3]) << i;
}

INSTANTIATE_TEST_SUITE_P(Widths, BmpWriter, testing::Values(1, 2, 3, 4, 5));

TEST(BmpWriterHeader, IsRecognizedAndNamesTheSizeOfTheFile)
{
    for (const int channels : {1, 3, 4}) {
        const auto file = test::encodedBmp(5, 3, channels, ramp(5, 3, channels));
        ASSERT_NE(formatOfContent(file), nullptr);
        EXPECT_EQ(formatOfContent(file)->identifier, "com.microsoft.bmp");
        EXPECT_EQ(littleEndianAt<std::uint32_t>(file, 2), file.size());
    }
}

TEST(BmpWriterProfile, ComesBackWithTheSamePixels)
{
    const std::vector<std::byte> profile(300, std::byte{7});
    for (const int channels : {3, 4}) {
        const auto rows = ramp(5, 3, channels);
        const auto file = test::encodedBmp(5, 3, channels, rows, profile);
        EXPECT_EQ(littleEndianAt<std::uint32_t>(file, 2), file.size());
        const auto header = readBmpHeader(file);
        ASSERT_TRUE(header);
        EXPECT_TRUE(std::ranges::equal(header->iccProfile, profile)) << channels;
        const auto decoded = decodeBmp(file);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(*decoded, rows) << channels;
    }
}

} // namespace
} // namespace lumora
