// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "pixels/drawing.h"
#include "tests/platform/formats/bmp/bmp_builder.h"
#include "tests/support/files.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <vips/vips.h>

namespace lumora {
namespace {

using test::BmpBuilder;

class OpenedBmp : public testing::Test
{
protected:
    Result<ImageSource> open(const BmpBuilder& bmp)
    {
        const auto bytes = bmp.file();
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
        test::writeFile(m_folder / "a.bmp", {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        return ImageSource::open(m_folder / "a.bmp");
    }

    test::TemporaryDirectory m_folder;
};

const std::vector<std::uint32_t> twoColors{0xFF0000, 0x00FF00};

TEST_F(OpenedBmp, IsNotDecodedBeforeItsRowsAreAskedFor)
{
    const auto source = open({.bits = 8,
                              .colorsUsed = 2,
                              .palette = twoColors,
                              .pixels = {9, 9, 0, 0, 0, 1, 0, 0}}); // the last row lies first
    ASSERT_TRUE(source);
    EXPECT_EQ(source->image().width(), 2);
    EXPECT_FALSE(source->image().isInMemory());
    EXPECT_FALSE(decode(source->image()));
    EXPECT_FALSE(decode(*draw(source->image(), {1, 1, ColorSpace::sRGB})));
}

// The image library takes no longer edges, and would make room for one pixel.
TEST_F(OpenedBmp, WithTooLongAnEdgeIsUnreadable)
{
    constexpr std::int32_t longest = 10'000'000;
    const auto withWidth = [&](std::int32_t width) {
        const std::size_t rowBytes = (static_cast<std::size_t>(width) + 31) / 32 * 4;
        return open({.width = width,
                     .height = 1,
                     .bits = 1,
                     .colorsUsed = 2,
                     .palette = twoColors,
                     .pixels = std::vector<std::uint8_t>(rowBytes)});
    };
    const auto source = withWidth(longest);
    ASSERT_TRUE(source);
    EXPECT_EQ(source->image().width(), longest);
    EXPECT_FALSE(withWidth(longest + 1));
}

TEST_F(OpenedBmp, GivesTheSamePictureWholeAndTurned)
{
    const auto opened = [this] {
        return open({.bits = 8,
                     .compression = 1,
                     .colorsUsed = 2,
                     .palette = twoColors,
                     .pixels = {2, 1, 0, 0, 1, 0, 1, 1, 0, 1}});
    };
    const auto straight = opened();
    const auto other = opened();
    ASSERT_TRUE(straight && other);
    const auto upright = decode(straight->image());
    const auto turned = decode(other->image().withPendingOrientation(3));
    ASSERT_TRUE(upright && turned);
    const auto pixelsOf = [](const Image& image) {
        const auto* first = static_cast<const std::uint8_t*>(vips_image_get_data(image.pixels()));
        return std::vector<int>(first, first + 12);
    };
    EXPECT_EQ(pixelsOf(*upright), (std::vector{255, 0, 0, 0, 255, 0, 0, 255, 0, 0, 255, 0}));
    EXPECT_EQ(pixelsOf(*turned), (std::vector{0, 255, 0, 0, 255, 0, 0, 255, 0, 255, 0, 0}));
}

} // namespace
} // namespace lumora
