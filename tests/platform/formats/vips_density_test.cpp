// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "vips_density.h"

#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

Resolution densityOfDotsAMillimetre(double x, double y)
{
    const VipsImagePtr picture = test::pictureOf(test::uniformPicture(2, 2, {1, 2, 3}));
    VipsImage* copy = nullptr;
    vips_copy(picture.get(), &copy, "xres", x, "yres", y, nullptr);
    const VipsImagePtr dense(copy);
    return densityOf(dense.get());
}

TEST(VipsDensity, CountsDotsAnInch)
{
    const Resolution resolution = densityOfDotsAMillimetre(300 / 25.4, 150 / 25.4);
    EXPECT_NEAR(resolution.x, 300, 1e-9);
    EXPECT_NEAR(resolution.y, 150, 1e-9);
}

// What the library says of a picture that says nothing.
TEST(VipsDensity, IsUnknownAtOneDotAMillimetre)
{
    EXPECT_EQ(densityOfDotsAMillimetre(1, 1), Resolution{});
    EXPECT_TRUE(densityOfDotsAMillimetre(1, 2).isKnown());
}

} // namespace
} // namespace lumora
