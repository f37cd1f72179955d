// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>

namespace lumora {
namespace {

class Bmp : public test::WrittenPictures
{
protected:
    // Its pixels, by way of a type that other readers know.
    test::Pixels pixelsOf(const std::filesystem::path& bmp)
    {
        return test::load(written(asStored(bmp), "public.tiff"));
    }
};

TEST_F(Bmp, ComesBackExactly)
{
    const test::Pixels pixels = test::corneredPicture(64, 48);
    const auto bmp = ImageSource::open(written(redrawn(pixels), "com.microsoft.bmp"));
    ASSERT_TRUE(bmp);
    EXPECT_EQ(bmp->typeIdentifier(), "com.microsoft.bmp");
    EXPECT_EQ(pixelsOf(m_folder / "out1").bytes, pixels.bytes);
}

TEST_F(Bmp, KeepsTransparencyAndWidensItsGray)
{
    EXPECT_THAT(
        pixelsOf(written(redrawn(test::uniformPicture(5, 4, {200, 100, 40, 51})), "com.microsoft.bmp"))
            .at(4, 3),
        testing::ElementsAre(200, 100, 40, 51));
    EXPECT_THAT(
        pixelsOf(written(redrawn(test::uniformPicture(5, 4, {90, 51})), "com.microsoft.bmp")).at(4, 3),
        testing::ElementsAre(90, 90, 90, 51));
}

TEST_F(Bmp, BringsADeepPictureToEightBits)
{
    const Image deep = asStored(test::corneredPicture(32, 24), {.sixteenBits = true});
    EXPECT_EQ(pixelsOf(written(deep, "com.microsoft.bmp")).bytes, test::corneredPicture(32, 24).bytes);
}

TEST_F(Bmp, EmbedsAProfile)
{
    const Image wide = asStored(test::uniformPicture(8, 8, {230, 60, 40}), {.profile = "p3"});
    const auto inSrgb = draw(wide, {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(inSrgb);
    const auto expected = test::load(written(*inSrgb, "public.png")).at(4, 4);

    const auto source = ImageSource::open(m_folder / "source.png");
    const auto bmp = ImageSource::open(written(wide, "com.microsoft.bmp"));
    ASSERT_TRUE(source && bmp);
    EXPECT_EQ(bmp->metadata().profileName, source->metadata().profileName);
    const auto shown = draw(bmp->image(), {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(shown);
    EXPECT_EQ(test::load(written(*shown, "public.png")).at(4, 4), expected);
}

TEST_F(Bmp, ConvertsAGrayProfileThatItCannotHold)
{
    test::save(m_folder / "gray.png", test::uniformPicture(8, 8, {100}), {.grayProfile = true});
    const auto gray = ImageSource::open(m_folder / "gray.png");
    ASSERT_TRUE(gray);
    const auto image = decode(gray->image());
    ASSERT_TRUE(image);
    const auto inSrgb = draw(*image, {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(inSrgb);
    const int expected = test::load(written(*inSrgb, "public.png")).at(4, 4)[0];
    const auto bmp = ImageSource::open(written(*image, "com.microsoft.bmp"));
    ASSERT_TRUE(bmp);
    const auto shown = draw(bmp->image(), {8, 8, ColorSpace::deviceRGB});
    ASSERT_TRUE(shown);
    EXPECT_EQ(test::load(written(*shown, "public.png")).at(4, 4)[0], expected);
}

} // namespace
} // namespace lumora
