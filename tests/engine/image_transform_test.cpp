// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/image_transform.h"

#include "pixels/decoding.h"
#include "pixels/drawing.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using ImageOptimizer::orientedImage;
using ImageOptimizer::scaleFactor;
using ImageOptimizer::transformedImage;
using test::settings;
using test::SettingsDraft;

const SettingsDraft noColor{
    .resizeMode = ResizeMode::none, .optimizeColorForSharing = false, .removeColorManagement = false};

SettingsDraft bounded(ResizeMode mode, std::int64_t limit)
{
    SettingsDraft draft = noColor;
    draft.resizeMode = mode;
    draft.maximumPixels = limit;
    return draft;
}

class ImageTransform : public testing::Test
{
protected:
    Image opened(const test::Pixels& pixels, const std::string& name = "a.png",
                 const test::SaveOptions& options = {})
    {
        test::save(m_folder / name, pixels, options);
        auto source = ImageSource::open(m_folder / name);
        EXPECT_TRUE(source);
        return orientedImage(*source, source->image());
    }

    test::TemporaryDirectory m_folder;
};

struct SizeCase
{
    const char* name;
    int width, height;
    ResizeMode mode;
    std::int64_t limit;
    std::int64_t newWidth, newHeight;
};

void PrintTo(const SizeCase& c, std::ostream* out)
{
    *out << c.name;
}

class ReducedSize : public testing::TestWithParam<SizeCase>
{
};

TEST_P(ReducedSize, KeepsTheShapeAndTruncates)
{
    const SizeCase& c = GetParam();
    test::TemporaryDirectory folder;
    test::save(folder / "a.png", test::uniformPicture(c.width, c.height, {90}));
    const auto source = ImageSource::open(folder / "a.png");
    ASSERT_TRUE(source);
    const Image image =
        transformedImage(orientedImage(*source, source->image()), settings(bounded(c.mode, c.limit)));
    EXPECT_EQ(image.width(), c.newWidth);
    EXPECT_EQ(image.height(), c.newHeight);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ReducedSize,
    testing::Values(SizeCase{"LongestEdge", 4000, 3000, ResizeMode::longestEdge, 1600, 1600, 1200},
                    SizeCase{"LongestEdgeOfAPortrait", 300, 400, ResizeMode::longestEdge, 160, 120, 160},
                    SizeCase{"ThinPictureKeepsOnePixel", 3, 3000, ResizeMode::maxHeight, 10, 1, 10},
                    SizeCase{"BoundOfZeroActsAsOne", 2, 2, ResizeMode::longestEdge, 0, 1, 1},
                    SizeCase{"NegativeBoundActsAsOne", 5, 5, ResizeMode::maxWidth, -7, 1, 1},
                    SizeCase{"MaxWidthIgnoresHeight", 100, 3000, ResizeMode::maxWidth, 160, 100, 3000},
                    SizeCase{"MaxHeight", 300, 200, ResizeMode::maxHeight, 100, 150, 100},
                    SizeCase{"ExactlyAtTheLimit", 160, 90, ResizeMode::maxWidth, 160, 160, 90},
                    SizeCase{"TruncatedNotRounded", 1000, 999, ResizeMode::maxWidth, 500, 500, 499},
                    SizeCase{"NoneIgnoresTheBound", 3000, 20, ResizeMode::none, 10, 3000, 20}),
    [](const auto& instance) { return instance.param.name; });

TEST(ScaleFactor, IsTheExactQuotient)
{
    EXPECT_DOUBLE_EQ(scaleFactor(4000, 3000, settings(bounded(ResizeMode::longestEdge, 1600))), 0.4);
    EXPECT_DOUBLE_EQ(scaleFactor(3, 3000, settings(bounded(ResizeMode::maxHeight, 10))), 1.0 / 300);
    EXPECT_DOUBLE_EQ(scaleFactor(1000, 3000, settings(bounded(ResizeMode::maxWidth, 1600))), 1.0);
}

TEST_F(ImageTransform, ReturnsTheVeryImageWhenNothingIsToChange)
{
    const Image image = opened(test::corneredPicture(40, 30));
    EXPECT_EQ(transformedImage(image, settings(noColor)), image);
    EXPECT_EQ(transformedImage(image, settings(bounded(ResizeMode::maxWidth, 40))), image);
}

TEST_F(ImageTransform, RedrawsForEitherColourOptionWithoutReducing)
{
    for (const bool srgb : {true, false}) {
        const Image image = opened(test::corneredPicture(40, 30));
        SettingsDraft draft = noColor;
        draft.optimizeColorForSharing = srgb;
        draft.removeColorManagement = !srgb;
        const Image redrawn = transformedImage(image, settings(draft));
        EXPECT_NE(redrawn, image);
        EXPECT_EQ(redrawn.width(), 40);
        EXPECT_TRUE(redrawn.alphaIsPremultiplied());
    }
}

TEST_F(ImageTransform, SharingWinsOverRemovingColourManagement)
{
    SettingsDraft draft = noColor;
    draft.optimizeColorForSharing = true;
    draft.removeColorManagement = true;
    const Image both = transformedImage(opened(test::corneredPicture(8, 8)), settings(draft));
    // The sRGB space is named by a profile; device RGB would have none.
    EXPECT_NE(both.withoutProfile(), both);
    EXPECT_EQ(*turned(both), both);
    EXPECT_TRUE(decode(both));
}

TEST_F(ImageTransform, SwapsWidthAndHeightForQuarterTurns)
{
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Image image = opened(test::corneredPicture(60, 40), "a.jpg", {.orientation = orientation});
        EXPECT_EQ(image.width(), orientation >= 5 ? 40 : 60) << orientation;
        const Image half = transformedImage(image, settings(bounded(ResizeMode::maxWidth, 20)));
        EXPECT_EQ(half.width(), 20) << orientation;
        EXPECT_EQ(half.height(), orientation >= 5 ? 30 : 13) << orientation;
    }
}

} // namespace
} // namespace lumora
