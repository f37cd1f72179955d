// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/transparent_color.h"

#include <gmock/gmock.h>

#include <vector>

namespace lumora {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Of gray and alpha.
std::optional<Bytes> colorIn(const Bytes& pixels)
{
    const auto color = transparentColor(pixels, 1, 1);
    if (!color) return std::nullopt;
    return Bytes(color->begin(), color->end());
}

TEST(TransparentColor, IsThatOfTheHiddenPixels)
{
    EXPECT_EQ(colorIn({7, 255, 9, 0, 8, 255, 9, 0}), Bytes{9});
    EXPECT_EQ(colorIn({7, 255, 9, 255}), Bytes{});
}

TEST(TransparentColor, IsAbsentWhereOnlyAlphaCanTell)
{
    EXPECT_EQ(colorIn({7, 255, 9, 128}), std::nullopt) << "partly transparent";
    EXPECT_EQ(colorIn({7, 0, 9, 0, 8, 255}), std::nullopt) << "two hidden colours";
    EXPECT_EQ(colorIn({9, 255, 7, 255, 9, 0}), std::nullopt) << "opaque in the hidden colour";
}

TEST(TransparentColor, IsToldByBothBytesOfDeepAlpha)
{
    EXPECT_EQ(transparentColor(Bytes{1, 2, 0, 1}, 2, 2), std::nullopt);
    EXPECT_EQ(transparentColor(Bytes{1, 2, 255, 254}, 2, 2), std::nullopt);
    EXPECT_TRUE(transparentColor(Bytes{1, 2, 0, 0, 1, 3, 255, 255}, 2, 2));
}

} // namespace
} // namespace lumora
