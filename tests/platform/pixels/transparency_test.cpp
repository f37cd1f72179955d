// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/transparency.h"

#include "pixels/drawing.h"
#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(Transparency, IsFoundInAnyOnePixel)
{
    test::Pixels picture = test::uniformPicture(7, 5, {10, 20, 30, 255});
    EXPECT_FALSE(hasTransparency(test::imageOf(picture)));
    for (const std::size_t pixel : {0U, 17U, 34U}) {
        test::Pixels other = picture;
        other.bytes[pixel * 4 + 3] = 254;
        EXPECT_TRUE(hasTransparency(test::imageOf(other))) << pixel;
    }
    // No alpha, whatever the last component says.
    EXPECT_FALSE(hasTransparency(test::imageOf(test::uniformPicture(7, 5, {10, 20, 30}))));
    EXPECT_TRUE(hasTransparency(test::imageOf(test::uniformPicture(7, 5, {10, 20}))));
}

TEST(Transparency, IsFoundInADrawnPicture)
{
    for (const std::uint8_t alpha : {std::uint8_t{255}, std::uint8_t{128}}) {
        const auto drawn = draw(test::imageOf(test::uniformPicture(40, 30, {10, 20, 30, alpha})),
                                {20, 15, ColorSpace::sRGB});
        ASSERT_TRUE(drawn);
        EXPECT_EQ(hasTransparency(*drawn), alpha != 255);
    }
}

} // namespace
} // namespace lumora
