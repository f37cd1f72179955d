// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_encoder.h"

#include "tests/platform/formats/png/png_file.h"
#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>

#include <zlib.h>

namespace lumora {
namespace {

using namespace std::string_literals;

using PngEncoder = test::WrittenPictures;

TEST_F(PngEncoder, StoresAPngInItsSmallestExactForm)
{
    struct Case
    {
        const char* name;
        test::Pixels pixels;
        int bands; // as a reader sees them
    };
    test::Pixels manyGrays{256, 2, 1, {}};
    for (int i = 0; i < 512; ++i)
        manyGrays.bytes.push_back(static_cast<std::uint8_t>(i % 256));
    test::Pixels halfClear = test::uniformPicture(20, 20, {10, 200, 30, 255});
    halfClear.bytes[3] = 0;
    halfClear.bytes[0] = halfClear.bytes[1] = halfClear.bytes[2] = 0;
    for (const Case& c : {Case{"photograph", test::corneredPicture(90, 60), 3}, Case{"grays", manyGrays, 1},
                          Case{"few colours with alpha", halfClear, 4},
                          Case{"two colours", test::uniformPicture(9, 7, {250, 1, 2}), 3}}) {
        const auto file = written(redrawn(c.pixels), "public.png");
        const test::Pixels back = test::load(file);
        EXPECT_EQ(back.bands, c.bands) << c.name;
        EXPECT_EQ(back.bytes, c.pixels.bytes) << c.name;
    }
    EXPECT_LT(
        std::filesystem::file_size(written(redrawn(test::uniformPicture(200, 200, {9, 8, 7})), "public.png")),
        150U);
}

TEST_F(PngEncoder, KeepsHalfTransparencyExactlyInPng)
{
    const auto back =
        test::load(written(redrawn(test::uniformPicture(8, 8, {255, 0, 255, 51})), "public.png"));
    EXPECT_THAT(back.at(1, 1), testing::ElementsAre(255, 0, 255, 51));
}

TEST_F(PngEncoder, KeepsSixteenBits)
{
    const Image deep = asStored(test::corneredPicture(32, 24), {.sixteenBits = true});
    const auto file = written(deep, "public.png");
    EXPECT_EQ(test::inspect(file).bits, 16);
    EXPECT_EQ(test::load(file).bytes, test::corneredPicture(32, 24).bytes);
}

// Colours in a palette would be fewer bytes here.
TEST_F(PngEncoder, KeepsTheModelOfAPictureThatWasNotRedrawn)
{
    const test::Pixels plain = test::uniformPicture(9, 9, {1, 2, 3});
    const auto colorTypeOf = [](const std::filesystem::path& png) {
        return int{test::readBytes(png).at(25)};
    };
    constexpr int rgb = 2;
    constexpr int palette = 3;
    EXPECT_EQ(colorTypeOf(written(asStored(plain), "public.png")), rgb);
    EXPECT_EQ(colorTypeOf(written(redrawn(plain), "public.png")), palette);
}

// Alpha would take a component of its own, and eight bits of a picture that has one.
TEST_F(PngEncoder, KeepsTheTransparentColorOfAPictureThatWasNotRedrawn)
{
    constexpr char gray = 0;
    constexpr char rgb = 2;
    struct Case
    {
        char depth;
        char colorType;
        std::string color;
        std::string rows; // two, behind their filters; another colour and this one
    };
    for (const Case& c :
         {Case{1, gray, "\0\1"s, "\0\x40\0\x40"s}, Case{2, gray, "\0\2"s, "\0\x60\0\x60"s},
          Case{4, gray, "\0\0"s, "\0\x50\0\x50"s}, Case{8, gray, "\0\x7F"s, "\0\x10\x7F\0\x11\x7F"s},
          Case{16, gray, "\1\2"s, "\0\1\3\1\2\0\2\2\1\2"s},
          Case{8, rgb, "\0\1\0\2\0\3"s, "\0\1\2\4\1\2\3\0\3\2\1\1\2\3"s},
          Case{16, rgb, "\0\1\0\2\0\3"s, "\0\0\1\0\2\1\3\0\1\0\2\0\3\0\0\1\0\2\0\4\0\1\0\2\0\3"s}}) {
        SCOPED_TRACE(testing::Message()
                     << int{c.depth} << " bits of " << (c.colorType == gray ? "gray" : "RGB"));
        const std::string header = "\0\0\0\2\0\0\0\2"s + c.depth + c.colorType + "\0\0\0"s;
        std::string data(compressBound(c.rows.size()), '\0');
        uLongf size = data.size();
        compress(reinterpret_cast<Bytef*>(data.data()), &size, reinterpret_cast<const Bytef*>(c.rows.data()),
                 c.rows.size());
        const auto file = m_folder / "keyed.png";
        test::writeText(
            file,
            test::pngOf({{"IHDR", header}, {"tRNS", c.color}, {"IDAT", data.substr(0, size)}, {"IEND", ""}}));
        const auto again = written(asStored(file), "public.png");
        const auto chunks = test::chunksIn(test::readBytes(again).substr(test::pngSignature.size()));
        EXPECT_THAT(chunks, testing::Contains(std::pair("IHDR"s, header)));
        EXPECT_THAT(chunks, testing::Contains(std::pair("tRNS"s, c.color)));
        EXPECT_EQ(test::load(again).bands, c.colorType == gray ? 2 : 4);
        EXPECT_EQ(test::load(again).bytes, test::load(file).bytes);
    }
}

TEST_F(PngEncoder, EmbedsTheProfile)
{
    const Image wide = asStored(test::corneredPicture(16, 12), {.profile = "p3"});
    const auto source = ImageSource::open(m_folder / "source.png");
    const auto again = ImageSource::open(written(wide, "public.png"));
    ASSERT_TRUE(source && again);
    EXPECT_FALSE(again->metadata().profileName.empty());
    EXPECT_EQ(again->metadata().profileName, source->metadata().profileName);
}

} // namespace
} // namespace lumora
