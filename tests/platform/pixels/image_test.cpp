// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/image.h"

#include "pixels/color_profile.h"
#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

const test::Pixels picture = test::corneredPicture(6, 4);

TEST(Image, IsPendingDecodedOrDrawn)
{
    const Image pending = test::imageOf(picture, ImageState::pending);
    EXPECT_FALSE(pending.isInMemory());
    EXPECT_FALSE(pending.alphaIsPremultiplied());
    const Image decoded = test::imageOf(picture, ImageState::decoded);
    EXPECT_TRUE(decoded.isInMemory());
    EXPECT_FALSE(decoded.alphaIsPremultiplied());
    const Image drawn = test::imageOf(picture, ImageState::drawn);
    EXPECT_TRUE(drawn.isInMemory());
    EXPECT_TRUE(drawn.alphaIsPremultiplied());
}

TEST(Image, HasTheSizeOfTheUprightPicture)
{
    const Image image = test::imageOf(picture);
    for (const Orientation orientation : {1, 2, 3, 4}) {
        EXPECT_EQ(image.withPendingOrientation(orientation).width(), 6);
        EXPECT_EQ(image.withPendingOrientation(orientation).height(), 4);
    }
    for (const Orientation orientation : {5, 6, 7, 8}) {
        EXPECT_EQ(image.withPendingOrientation(orientation).width(), 4);
        EXPECT_EQ(image.withPendingOrientation(orientation).height(), 6);
    }
    EXPECT_EQ(image.pendingOrientation(), 1);
}

TEST(Image, SharesItsPixelsWithItsCopies)
{
    const Image image = test::imageOf(picture);
    const Image copy = image; // NOLINT(performance-unnecessary-copy-initialization): is what is tested
    EXPECT_EQ(copy, image);
    EXPECT_EQ(copy.pixels(), image.pixels());
    EXPECT_NE(image.withPendingOrientation(3), image);
    EXPECT_NE(test::imageOf(picture), image);
}

TEST(Image, OutlivesItsProfileWithoutLosingAnythingElse)
{
    const Image image = test::imageOf(picture, ImageState::drawn).withPendingOrientation(6);
    vips_image_set_blob_copy(image.pixels(), VIPS_META_ICC_NAME, "profile", 7);
    const Image plain = image.withoutProfile();
    EXPECT_TRUE(attachedProfile(plain.pixels()).empty());
    EXPECT_EQ(attachedProfile(image.pixels()).size(), 7U);
    EXPECT_EQ(plain.pendingOrientation(), 6);
    EXPECT_TRUE(plain.alphaIsPremultiplied());
    EXPECT_EQ(test::pixelsOf(plain.pixels()).bytes, picture.bytes);
}

TEST(ReducedImage, IsThePictureItselfWhereNothingElseIsKnown)
{
    const Image image = test::imageOf(picture, ImageState::pending);
    const auto reduced = image.reduced(2);
    ASSERT_TRUE(reduced);
    EXPECT_EQ(*reduced, image);
}

TEST(ReducedImage, IsWhatTheDecodingGivesTurnedAlike)
{
    int asked = 0;
    const Image image = test::imageOf(picture, ImageState::pending)
                            .withReducedDecoding([&](int divisor) -> Result<VipsImage*> {
                                asked = divisor;
                                return test::pictureOf(test::corneredPicture(2, 1)).release();
                            })
                            .withPendingOrientation(6);
    const auto reduced = image.reduced(4);
    ASSERT_TRUE(reduced);
    EXPECT_EQ(asked, 4);
    EXPECT_EQ(reduced->width(), 1);
    EXPECT_EQ(reduced->height(), 2);
    EXPECT_FALSE(reduced->isInMemory());
}

TEST(ReducedImage, FailsWithTheDecoding)
{
    const auto reduced = test::imageOf(picture, ImageState::pending)
                             .withReducedDecoding([](int) -> Result<VipsImage*> { return Error{"gone"}; })
                             .reduced(2);
    ASSERT_FALSE(reduced);
    EXPECT_EQ(reduced.error().description, "gone");
}

} // namespace
} // namespace lumora
