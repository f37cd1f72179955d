// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_chunks.h"

#include "tests/platform/formats/png/png_file.h"

#include <gtest/gtest.h>
#include <libdeflate.h>

#include <memory>

namespace lumora {
namespace {

std::string inflated(const std::string& data, std::size_t size)
{
    const std::unique_ptr<libdeflate_decompressor, decltype(&libdeflate_free_decompressor)> decompressor(
        libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    std::string out(size, '?');
    EXPECT_EQ(
        libdeflate_zlib_decompress(decompressor.get(), data.data(), data.size(), out.data(), size, nullptr),
        LIBDEFLATE_SUCCESS);
    return out;
}

// Below and above the size from which the thorough search would take too long.
TEST(PngData, UnfoldsToItself)
{
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{1000}, std::size_t{1} << 22U}) {
        std::string data;
        for (std::size_t i = 0; i < size; ++i)
            data += static_cast<char>(i / 9 % 50);
        const std::string packed = deflated(data);
        EXPECT_TRUE(inflated(packed, size) == data) << size;
        if (size > 1) {
            EXPECT_LT(packed.size(), size);
        }
    }
}

TEST(PngChunk, HasItsLengthBeforeAndItsChecksumBehind)
{
    Bytes png;
    appendChunk(png, "IEND", {});
    EXPECT_EQ(test::textOf(png), std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12));
    appendChunk(png, "tEXt", std::string_view("a\0b", 3));
    EXPECT_EQ(test::textOf(png).substr(12, 11), std::string("\0\0\0\3tEXta\0b", 11));
    EXPECT_EQ(png.size(), 27U);
}

TEST(PngNumber, BeginsWithTheMostSignificantByte)
{
    EXPECT_EQ(bigEndian(0x01020304), "\1\2\3\4");
    EXPECT_EQ(bigEndian(0xFFFFFFFF), "\xFF\xFF\xFF\xFF");
}

} // namespace
} // namespace lumora
