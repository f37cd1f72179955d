// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/drawing.h"

#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/decoding.h"
#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

using test::imageOf;
using test::pixelsOf;
using test::uniformPicture;

test::Pixels drawn(const Image& image, const DrawRequest& request)
{
    const auto result = draw(image, request);
    if (!result) throw std::runtime_error(result.error().description);
    EXPECT_TRUE(result->alphaIsPremultiplied());
    EXPECT_EQ(result->width(), request.width);
    EXPECT_EQ(result->height(), request.height);
    return pixelsOf(result->pixels());
}

Image withProfile(const Image& image, ProfileBytes profile)
{
    vips_image_set_blob_copy(image.pixels(), VIPS_META_ICC_NAME, profile.data(), profile.size());
    return image;
}

ProfileBytes profileOf(const Result<Image>& image)
{
    return attachedProfile(image->pixels());
}

TEST(Draw, GivesColoursOfTheWantedSize)
{
    const test::Pixels small =
        drawn(imageOf(uniformPicture(60, 40, {10, 200, 30})), {30, 20, ColorSpace::sRGB});
    EXPECT_EQ(small.bands, 3);
    EXPECT_EQ(small.at(0, 0), (std::vector<int>{10, 200, 30}));
    EXPECT_EQ(small.at(29, 19), (std::vector<int>{10, 200, 30}));
    const test::Pixels gray = drawn(imageOf(uniformPicture(60, 40, {77})), {60, 40, ColorSpace::deviceRGB});
    EXPECT_EQ(gray.at(59, 39), (std::vector<int>{77, 77, 77}));
    const test::Pixels opaque =
        drawn(imageOf(uniformPicture(60, 40, {10, 200, 30, 255})), {60, 40, ColorSpace::sRGB});
    EXPECT_EQ(opaque.at(59, 39), (std::vector<int>{10, 200, 30, 255}));
}

TEST(Draw, Premultiplies)
{
    const Image image = imageOf(uniformPicture(60, 40, {200, 100, 50, 128}));
    for (const std::int64_t width : {60, 30})
        EXPECT_EQ(drawn(image, {width, width * 2 / 3, ColorSpace::deviceRGB}).at(5, 5),
                  (std::vector<int>{100, 50, 25, 128}));
}

// The colours of transparent pixels are noise.
TEST(Draw, LetsNoTransparentColourThrough)
{
    test::Pixels picture = uniformPicture(40, 40, {200, 0, 0, 255});
    for (std::size_t i = 0; i < picture.bytes.size(); i += 4) {
        if (i / 4 % 40 >= 20) std::ranges::copy(std::array<std::uint8_t, 4>{0, 255, 0, 0}, &picture.bytes[i]);
    }
    const test::Pixels small = drawn(imageOf(picture), {10, 10, ColorSpace::deviceRGB});
    for (int x = 0; x < 10; ++x)
        EXPECT_EQ(small.at(x, 5)[1], 0) << x;
}

TEST(Draw, TurnsUpright)
{
    const Image image = imageOf(test::corneredPicture(64, 32)).withPendingOrientation(6);
    for (const std::int64_t width : {32, 16}) {
        const test::Pixels upright = drawn(image, {width, 2 * width, ColorSpace::deviceRGB});
        const auto last = static_cast<int>(width) - 1;
        EXPECT_GT(upright.at(0, 0)[0], 180); // yellow, which was below
        EXPECT_GT(upright.at(0, 0)[1], 180);
        EXPECT_GT(upright.at(last, 0)[0], 200); // red
        EXPECT_LT(upright.at(last, 0)[1], 80);
        EXPECT_GT(upright.at(last, 2 * last + 1)[1], 170); // green
        EXPECT_GT(upright.at(0, 2 * last + 1)[2], 190);    // blue
    }
}

TEST(Draw, AttachesTheProfileOfItsColours)
{
    const Image image = withProfile(imageOf(uniformPicture(8, 8, {9, 9, 9})), srgbProfile());
    EXPECT_TRUE(std::ranges::equal(profileOf(draw(image, {4, 4, ColorSpace::sRGB})), srgbProfile()));
    EXPECT_TRUE(std::ranges::equal(profileOf(draw(image, {4, 4, ColorSpace::own})), srgbProfile()));
    EXPECT_TRUE(profileOf(draw(image, {4, 4, ColorSpace::deviceRGB})).empty());
    EXPECT_TRUE(profileOf(draw(image.withoutProfile(), {4, 4, ColorSpace::own})).empty());
}

TEST(Draw, GivesADrawnPictureAgainAsItIs)
{
    const auto first =
        decode(*draw(imageOf(uniformPicture(8, 8, {200, 100, 50, 128})), {4, 4, ColorSpace::sRGB}));
    ASSERT_TRUE(first);
    const auto again = draw(*first, {4, 4, ColorSpace::sRGB});
    ASSERT_TRUE(again);
    EXPECT_EQ(*again, *first);
    const auto plain = draw(*first, {4, 4, ColorSpace::deviceRGB});
    EXPECT_TRUE(profileOf(plain).empty());
    EXPECT_EQ(pixelsOf(plain->pixels()).bytes, pixelsOf(first->pixels()).bytes);
    EXPECT_EQ(drawn(*first, {2, 2, ColorSpace::sRGB}).at(0, 0), (std::vector<int>{100, 50, 25, 128}));
}

TEST(Draw, FailsForDamagedRows)
{
    const Image damaged(test::damagedPicture(64, 64).release(), 1, ImageState::pending);
    for (const std::int64_t width : {64, 16}) {
        for (const Orientation orientation : {1, 2, 6}) {
            const auto drawing =
                draw(damaged.withPendingOrientation(orientation), {width, width, ColorSpace::sRGB});
            ASSERT_TRUE(drawing);
            EXPECT_FALSE(drawing->outcome()->error());
            EXPECT_FALSE(readThrough(*drawing));
            ASSERT_TRUE(drawing->outcome()->error());
            EXPECT_EQ(drawing->outcome()->error()->cause, Error::Cause::unspecified);
        }
    }
}

class ReducedDraw : public testing::Test
{
protected:
    // The divisor that drawing a black picture of this size so wide asks for; 1 for none.
    static int divisorFor(int size, std::int64_t width)
    {
        int asked = 1;
        const Image image = imageOf(uniformPicture(size, size, {0}), ImageState::pending)
                                .withReducedDecoding([&](int divisor) -> Result<VipsImage*> {
                                    asked = divisor;
                                    const int reduced = (size + divisor - 1) / divisor;
                                    return test::pictureOf(uniformPicture(reduced, reduced, {0})).release();
                                });
        EXPECT_TRUE(draw(image, {width, width, ColorSpace::deviceRGB}));
        return asked;
    }
};

TEST_F(ReducedDraw, LeavesAtLeastAHalvingToDo)
{
    EXPECT_EQ(divisorFor(1601, 800), 1);
    EXPECT_EQ(divisorFor(1601, 401), 1);
    EXPECT_EQ(divisorFor(1601, 400), 2);
    EXPECT_EQ(divisorFor(1601, 200), 4);
    EXPECT_EQ(divisorFor(1601, 100), 8);
    EXPECT_EQ(divisorFor(1601, 10), 8);
}

TEST_F(ReducedDraw, IsNotWorthItBelowAMegapixel)
{
    EXPECT_EQ(divisorFor(999, 50), 1);
    EXPECT_EQ(divisorFor(1000, 50), 8);
}

TEST(Decode, GivesThePictureUprightAsItIsStored)
{
    const test::Pixels stored = test::corneredPicture(6, 4);
    const Image pending = imageOf(stored, ImageState::pending).withPendingOrientation(3);
    const auto decoded = decode(pending);
    ASSERT_TRUE(decoded);
    EXPECT_TRUE(decoded->isInMemory());
    EXPECT_FALSE(decoded->alphaIsPremultiplied());
    EXPECT_EQ(decoded->pendingOrientation(), 1);
    const test::Pixels upright = pixelsOf(decoded->pixels());
    EXPECT_EQ(upright.bands, 3);
    EXPECT_EQ(upright.at(0, 0), stored.at(5, 3));
    EXPECT_EQ(upright.at(5, 3), stored.at(0, 0));
}

TEST(Decode, GivesAPictureInMemoryBack)
{
    const Image image = imageOf(test::corneredPicture(6, 4));
    EXPECT_EQ(*decode(image), image);
}

TEST(Decode, FailsForDamagedRows)
{
    EXPECT_FALSE(decode(Image(test::damagedPicture(8, 8).release(), 1, ImageState::pending)));
}

} // namespace
} // namespace lumora
