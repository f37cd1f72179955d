// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_encoder.h"

#include "format_io.h"
#include "jpeg/quality_coding.h"
#include "pixels/vips_library.h"
#include "tests/platform/formats/photographs.h"
#include "tests/support/sample_images.h"

#include <gtest/gtest.h>
#include <vips/vips.h>

#include <new>
#include <string>

namespace lumora {
namespace {

class JpegEncoder : public testing::Test
{
protected:
    JpegEncoder() { allowOperations(); }

    static VipsImagePtr imageOf(const test::Pixels& pixels)
    {
        return VipsImagePtr(vips_image_new_from_memory_copy(pixels.bytes.data(), pixels.bytes.size(),
                                                            pixels.width, pixels.height, pixels.bands,
                                                            VIPS_FORMAT_UCHAR));
    }

    static std::string encoded(const test::Pixels& pixels, int quality)
    {
        const VipsImagePtr image = imageOf(pixels);
        std::string jpeg;
        const auto status =
            encodeJpeg({image.get(), codingsOf(pixels.bands, quality, quality >= 90), quality >= 90, {}},
                       [&](std::span<const std::byte> bytes) -> Status {
                           jpeg.append(reinterpret_cast<const char*>(bytes.data()), bytes.size());
                           return Done{};
                       });
        EXPECT_TRUE(status);
        return jpeg;
    }

    // As the image library decodes it, by its strictest rule.
    static test::Pixels decoded(const std::string& jpeg)
    {
        const VipsImagePtr image(vips_image_new_from_buffer(jpeg.data(), jpeg.size(), "", "fail_on",
                                                            VIPS_FAIL_ON_WARNING, nullptr));
        if (!image) return {};
        test::Pixels pixels{vips_image_get_width(image.get()),
                            vips_image_get_height(image.get()),
                            vips_image_get_bands(image.get()),
                            {}};
        std::size_t size = 0;
        auto* const bytes = static_cast<std::uint8_t*>(vips_image_write_to_memory(image.get(), &size));
        if (bytes) pixels.bytes.assign(bytes, bytes + size);
        g_free(bytes);
        return pixels;
    }
};

test::Pixels grayOf(const test::Pixels& color)
{
    test::Pixels gray{color.width, color.height, 1, {}};
    for (std::size_t i = 0; i < color.bytes.size(); i += 3)
        gray.bytes.push_back(color.bytes[i]);
    return gray;
}

int largestDifference(const test::Pixels& a, const test::Pixels& b)
{
    int largest = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i)
        largest = std::max(largest, std::abs(a.bytes[i] - b.bytes.at(i)));
    return largest;
}

// A slope of colours, which has to come back at every place, the outermost too.
test::Pixels slope(int width, int height)
{
    test::Pixels pixels{width, height, 3, {}};
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (const int value : {60 + 3 * x, 60 + 3 * y, 200 - 2 * x - y})
                pixels.bytes.push_back(static_cast<std::uint8_t>(value));
        }
    }
    return pixels;
}

class JpegEncoderAtSize : public JpegEncoder, public testing::WithParamInterface<int>
{
};

TEST_P(JpegEncoderAtSize, GivesThePictureBackAtEveryHeight)
{
    for (int height = 1; height <= 40; ++height) {
        const test::Pixels color = slope(GetParam(), height);
        for (const int quality : {85, 95}) {
            for (const test::Pixels& pixels : {color, grayOf(color)}) {
                const test::Pixels back = decoded(encoded(pixels, quality));
                ASSERT_EQ(back.width, pixels.width);
                ASSERT_EQ(back.height, height);
                ASSERT_EQ(back.bands, pixels.bands);
                EXPECT_LE(largestDifference(pixels, back), quality == 85 ? 18 : 7)
                    << height << " at " << quality << " with " << pixels.bands;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Widths, JpegEncoderAtSize, testing::Range(1, 41));

TEST_F(JpegEncoder, IsSmallerThanTheLibraryWithNoMoreError)
{
    const test::Pixels photograph = test::photographLike(320, 240);
    for (const double quality : {0.5, 0.7, 0.82, 0.92}) {
        const std::string own = encoded(photograph, static_cast<int>(std::lround(100 * quality)));
        const std::string library = test::libraryJpeg(photograph, quality);
        EXPECT_LT(static_cast<double>(own.size()), 0.9 * static_cast<double>(library.size())) << quality;
        EXPECT_LT(test::meanDifference(photograph, decoded(own)),
                  1.25 * test::meanDifference(photograph, decoded(library)))
            << quality;
    }
}

TEST_F(JpegEncoder, IsNearlyLosslessAtTheTop)
{
    const test::Pixels photograph = test::photographLike(160, 120);
    EXPECT_LE(largestDifference(photograph, decoded(encoded(photograph, 100))), 3);
    EXPECT_LE(largestDifference(grayOf(photograph), decoded(encoded(grayOf(photograph), 100))), 2);
}

TEST_F(JpegEncoder, GrowsWithQuality)
{
    const test::Pixels photograph = test::photographLike(160, 120);
    std::size_t smaller = 0;
    for (const int quality : {1, 10, 20, 35, 50, 65, 75, 82, 86, 90, 93, 96, 98, 100}) {
        const std::size_t size = encoded(photograph, quality).size();
        EXPECT_GT(size, smaller) << quality;
        smaller = size;
    }
}

// Narrow stripes have no colour of their own at half the resolution, but the same light as before.
TEST_F(JpegEncoder, KeepsTheLightOfColouredStripes)
{
    test::Pixels stripes{96, 96, 3, {}};
    for (int i = 0; i < 96 * 96; ++i) {
        const bool isRed = i % 96 / 3 % 2 == 0;
        for (const int value : {isRed ? 230 : 20, 20, isRed ? 20 : 230})
            stripes.bytes.push_back(static_cast<std::uint8_t>(value));
    }
    const auto light = [](const test::Pixels& pixels) {
        double sum = 0;
        for (std::size_t i = 0; i < pixels.bytes.size(); ++i) {
            const double share[] = {0.2126, 0.7152, 0.0722};
            sum += share[i % 3] * std::pow(pixels.bytes[i] / 255.0, 2.2);
        }
        return sum;
    };
    const double wanted = light(stripes);
    const double library = light(decoded(test::libraryJpeg(stripes, 0.85)));
    EXPECT_LT(std::abs(light(decoded(encoded(stripes, 85))) - wanted), 0.6 * std::abs(library - wanted));
}

TEST_F(JpegEncoder, HandsOnWhyItsFileCouldNotBeWritten)
{
    const VipsImagePtr image = imageOf(test::corneredPicture(64, 48));
    const auto refused =
        encodeJpeg({image.get(), codingsOf(3, 80, false), false, {}},
                   [](std::span<const std::byte>) -> Status { return Error{"the disk is full"}; });
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().description, "the disk is full");

    EXPECT_THROW(
        static_cast<void>(encodeJpeg({image.get(), codingsOf(3, 80, false), false, {}},
                                     [](std::span<const std::byte>) -> Status { throw std::bad_alloc(); })),
        std::bad_alloc);
}

} // namespace
} // namespace lumora
