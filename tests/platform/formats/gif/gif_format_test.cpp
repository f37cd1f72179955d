// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/formats/written_pictures.h"
#include "tests/support/color_patches.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace lumora {
namespace {

using Gif = test::WrittenPictures;

TEST_F(Gif, GivesAGifTheExactColoursWhereItCan)
{
    test::Pixels many{16, 16, 3, {}}; // as many colours as a palette has
    for (int i = 0; i < 256; ++i) {
        for (const int component : {i, 255 - i, i * 7 % 256})
            many.bytes.push_back(static_cast<std::uint8_t>(component));
    }
    EXPECT_EQ(test::load(written(redrawn(many), "com.compuserve.gif")).bytes, many.bytes);

    test::Pixels holed = test::uniformPicture(2, 1, {200, 40, 40, 255});
    holed.bytes[7] = 0;
    const auto gif = test::load(written(redrawn(holed), "com.compuserve.gif"));
    EXPECT_THAT(gif.at(0, 0), testing::ElementsAre(200, 40, 40, 255));
    EXPECT_EQ(gif.at(1, 0)[3], 0);
}

TEST_F(Gif, GivesAPictureOfManyColoursClosely)
{
    const test::Pixels pixels = test::corneredPicture(64, 48);
    const auto gif = test::load(written(redrawn(pixels), "com.compuserve.gif"));
    EXPECT_NEAR(gif.at(4, 4)[0], 230, 20);
}

TEST_F(Gif, ConvertsAProfileThatItCannotHold)
{
    const Image wide = asStored(test::uniformPicture(8, 8, {230, 60, 40}), {.profile = "p3"});
    const auto inSrgb = draw(wide, {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(inSrgb);
    const auto expected = test::load(written(*inSrgb, "public.png")).at(4, 4);
    EXPECT_EQ(test::load(written(wide, "com.compuserve.gif")).at(4, 4), expected);
}

// The file knows shown and hidden, nothing between.
TEST_F(Gif, DecidesWhetherAHalfTransparentPixelIsShown)
{
    const auto gif =
        test::load(written(redrawn(test::uniformPicture(8, 8, {200, 40, 40, 200})), "com.compuserve.gif"));
    EXPECT_EQ(gif.at(4, 4).back(), 255);
}

TEST_F(Gif, BringsItsRemarksAlong)
{
    const Metadata metadata{.gifComments = {"first", std::string(600, 'x')}};
    const auto source =
        ImageSource::open(written(redrawn(test::corneredPicture(16, 12)), "com.compuserve.gif", 1, metadata));
    ASSERT_TRUE(source);
    EXPECT_EQ(source->metadata().gifComments, metadata.gifComments);
    EXPECT_TRUE(decode(source->image()));
}

TEST_F(Gif, HasTheColoursOfTheProfileInIt)
{
    const auto file = m_folder / "a.gif";
    test::save(file, test::uniformPicture(8, 8, {200, 100, 100}));
    std::string gif = test::readBytes(file);
    std::string block = "!\xFF\x0BICCRGBG1012";
    const test::Profile p3 = test::libraryProfile("p3");
    for (std::size_t at = 0; at < p3.size(); at += 255) {
        const std::size_t count = std::min<std::size_t>(255, p3.size() - at);
        block += static_cast<char>(count);
        block.append(p3.begin() + static_cast<std::ptrdiff_t>(at),
                     p3.begin() + static_cast<std::ptrdiff_t>(at + count));
    }
    const auto packed = static_cast<unsigned char>(gif.at(10));
    const std::size_t table = (packed & 0x80U) != 0 ? std::size_t{3} << ((packed & 7U) + 1) : 0;
    gif.insert(13 + table, block + '\0');
    test::writeText(file, gif);

    const auto source = ImageSource::open(file);
    ASSERT_TRUE(source);
    EXPECT_NE(source->metadata().profileName, "");
    const auto found = test::load(written(asStored(file), "com.compuserve.gif")).at(4, 4);
    EXPECT_NEAR(found[0], 213, 3); // the same red needs more of a narrower primary
    EXPECT_NEAR(found[1], 94, 3);
}

TEST_F(Gif, GivesItsFirstFrame)
{
    test::Pixels frames = test::uniformPicture(8, 16, {250, 0, 0});
    for (std::size_t i = std::size_t{8} * 8 * 3; i < frames.bytes.size(); i += 3)
        frames.bytes[i] = 10;
    test::save(m_folder / "a.gif", frames, {.pageHeight = 8});
    const auto source = ImageSource::open(m_folder / "a.gif");
    ASSERT_TRUE(source);
    EXPECT_EQ(source->image().height(), 8);
    EXPECT_EQ(test::load(written(asStored(m_folder / "a.gif"), "public.png")).at(4, 7)[0], 250);
}

} // namespace
} // namespace lumora
