// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/storable_image.h"

#include "pixels/color_conversion.h"
#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::imageOf;
using test::pixelsOf;
using test::uniformPicture;

constexpr StorageLimits roomy{.holdsSixteenBits = true,
                              .holdsGray = true,
                              .holdsInk = true,
                              .holdsAlpha = true,
                              .profiles = ProfileStorage::any};
constexpr StorageLimits plain{}; // three components of 8 bits

VipsImagePtr stored(const Image& image, const StorageLimits& limits)
{
    auto result = storableImage(image, limits);
    if (!result) throw std::runtime_error(result.error().description);
    return std::move(*result);
}

std::vector<int> firstPixel(const Image& image, const StorageLimits& limits)
{
    return pixelsOf(stored(image, limits).get()).at(0, 0);
}

Image bitmap(std::vector<std::uint8_t> color)
{
    return imageOf(uniformPicture(3, 2, std::move(color)), ImageState::drawn);
}

TEST(StorableBitmap, HasNoComponentThatSaysNothing)
{
    EXPECT_EQ(firstPixel(bitmap({9, 9, 9, 255}), roomy), (std::vector<int>{9}));
    EXPECT_EQ(firstPixel(bitmap({9, 8, 7, 255}), roomy), (std::vector<int>{9, 8, 7}));
    EXPECT_EQ(firstPixel(bitmap({50, 50, 50, 128}), roomy), (std::vector<int>{100, 128}));
    EXPECT_EQ(firstPixel(bitmap({100, 50, 25, 128}), roomy), (std::vector<int>{199, 100, 50, 128}));
}

TEST(StorableBitmap, KeepsWhatOnlyItsLastPixelNeeds)
{
    test::Pixels pixels = uniformPicture(3, 2, {9, 9, 9, 255});
    pixels.bytes[20] = 8; // the red of the last pixel
    EXPECT_EQ(pixelsOf(stored(imageOf(pixels, ImageState::drawn), roomy).get()).bands, 3);
    pixels.bytes[23] = 254;
    EXPECT_EQ(pixelsOf(stored(imageOf(pixels, ImageState::drawn), roomy).get()).bands, 4);
}

TEST(StorableBitmap, IsLaidOverWhiteWhereAlphaHasNoRoom)
{
    EXPECT_EQ(firstPixel(bitmap({100, 50, 25, 128}), plain), (std::vector<int>{227, 177, 152}));
    EXPECT_EQ(firstPixel(bitmap({0, 0, 0, 0}), plain), (std::vector<int>{255}));
}

// The profile describes three components.
TEST(StorableBitmap, StaysColouredUnderItsProfile)
{
    const Image image = bitmap({9, 9, 9, 255});
    vips_image_set_blob_copy(image.pixels(), VIPS_META_ICC_NAME, srgbProfile().data(), srgbProfile().size());
    const VipsImagePtr result = stored(image, roomy);
    EXPECT_EQ(vips_image_get_bands(result.get()), 3);
    EXPECT_EQ(blobOf(result.get(), VIPS_META_ICC_NAME).size(), srgbProfile().size());
}

TEST(StorableBitmap, LosesTheProfileThatCannotBeHeld)
{
    const Image image = bitmap({9, 8, 7, 255});
    vips_image_set_blob_copy(image.pixels(), VIPS_META_ICC_NAME, srgbProfile().data(), srgbProfile().size());
    StorageLimits limits = roomy;
    limits.profiles = ProfileStorage::none;
    EXPECT_FALSE(vips_image_get_typeof(stored(image, limits).get(), VIPS_META_ICC_NAME));
    EXPECT_EQ(firstPixel(image, limits), (std::vector{9, 8, 7}));
    limits.profiles = ProfileStorage::rgbOnly;
    EXPECT_TRUE(vips_image_get_typeof(stored(image, limits).get(), VIPS_META_ICC_NAME));
}

TEST(StorablePicture, KeepsItsDepthWhereThereIsRoom)
{
    VipsImage* deep = nullptr;
    ASSERT_EQ(vips_cast(test::pictureOf(uniformPicture(3, 2, {9, 8, 7}), VIPS_INTERPRETATION_RGB16).get(),
                        &deep, VIPS_FORMAT_USHORT, "shift", TRUE, nullptr),
              0);
    const Image image(deep, 1, ImageState::decoded);
    EXPECT_EQ(vips_image_get_format(stored(image, roomy).get()), VIPS_FORMAT_USHORT);
    EXPECT_EQ(vips_image_get_format(stored(image, plain).get()), VIPS_FORMAT_UCHAR);
    EXPECT_EQ(firstPixel(image, plain), (std::vector<int>{9, 8, 7}));
}

TEST(StorablePicture, KeepsItsModelWhereThereIsRoom)
{
    const Image ink(test::pictureOf(uniformPicture(3, 2, {0, 0, 0, 0}), VIPS_INTERPRETATION_CMYK).release(),
                    1, ImageState::decoded);
    EXPECT_EQ(firstPixel(ink, roomy), (std::vector<int>{0, 0, 0, 0}));
    for (const int component : firstPixel(ink, plain))
        EXPECT_GE(component, 253) << "no ink is white";
    EXPECT_EQ(firstPixel(imageOf(uniformPicture(3, 2, {9, 0})), plain), (std::vector<int>{255}));
    EXPECT_EQ(firstPixel(imageOf(uniformPicture(3, 2, {9, 0})), roomy), (std::vector<int>{9, 0}));
}

TEST(StorablePicture, LosesAProfileOfOtherComponents)
{
    const Image gray = imageOf(uniformPicture(3, 2, {90}));
    const ProfileBytes srgb = srgbProfile();
    vips_image_set_blob_copy(gray.pixels(), VIPS_META_ICC_NAME, srgb.data(), srgb.size());
    EXPECT_EQ(vips_image_get_typeof(stored(gray, roomy).get(), VIPS_META_ICC_NAME), 0U);
    EXPECT_EQ(firstPixel(gray, roomy), (std::vector<int>{90}));
}

TEST(StorablePicture, LosesWhatDescribesNoPixels)
{
    const Image image = imageOf(test::corneredPicture(3, 2));
    vips_image_set_blob_copy(image.pixels(), VIPS_META_ICC_NAME, srgbProfile().data(), srgbProfile().size());
    vips_image_set_string(image.pixels(), "png-comment-0-Author", "somebody");
    vips_image_set_int(image.pixels(), VIPS_META_ORIENTATION, 6);
    const VipsImagePtr result = stored(image, roomy);
    EXPECT_FALSE(vips_image_get_typeof(result.get(), "png-comment-0-Author"));
    EXPECT_FALSE(vips_image_get_typeof(result.get(), VIPS_META_ORIENTATION));
    EXPECT_EQ(blobOf(result.get(), VIPS_META_ICC_NAME).size(), srgbProfile().size());
    EXPECT_TRUE(vips_image_get_typeof(image.pixels(), "png-comment-0-Author"))
        << "the picture itself is kept";
}

TEST(StorablePicture, HasTheResolutionThatMeansUnknown)
{
    for (const Image& image : {bitmap({9, 8, 7, 255}), imageOf(test::corneredPicture(3, 2))}) {
        const VipsImagePtr result = stored(image, roomy);
        EXPECT_NEAR(vips_image_get_xres(result.get()) * 25.4, 72, 0.001);
        EXPECT_NEAR(vips_image_get_yres(result.get()) * 25.4, 72, 0.001);
    }
}

} // namespace
} // namespace lumora
