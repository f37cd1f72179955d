// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/described_colors.h"

#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumora {
namespace {

std::vector<int> inSrgb(const ColorDescription& colors, std::array<std::uint8_t, 3> rgb)
{
    const auto profile = profileOf(colors, ColorModel::rgb);
    if (!profile) return {};
    std::array<std::uint8_t, 4> rgba{};
    ColorConversion::toSrgb({ColorModel::rgb, false}, *profile).run(rgb.data(), rgba.data(), 1);
    return {rgba[0], rgba[1], rgba[2]};
}

TEST(DescribedColors, ThatAreSrgbNeedNoProfile)
{
    for (const ColorModel model : {ColorModel::rgb, ColorModel::gray}) {
        EXPECT_EQ(profileOf({}, model), std::vector<std::uint8_t>{});
        EXPECT_EQ(profileOf(colorsOfPower(srgbPrimaries, 100000.0 / 45455), model),
                  std::vector<std::uint8_t>{});
        EXPECT_EQ(profileOf(colorsOfPower(srgbPrimaries, 100000.0 / 45000), model),
                  std::vector<std::uint8_t>{});
    }
    for (const unsigned transfer : {1U, 2U, 6U, 13U, 14U, 15U})
        EXPECT_EQ(profileOf(*colorsOfCodes(1, transfer), ColorModel::rgb), std::vector<std::uint8_t>{})
            << transfer;
}

TEST(DescribedColors, OfAWiderSpaceWith22KeepThatPower)
{
    const ColorDescription adobe = colorsOfPower(adobeRgbPrimaries, 2.2);
    EXPECT_EQ(adobe.transfer, Transfer::power);
    EXPECT_FALSE(profileOf(adobe, ColorModel::rgb)->empty());
}

TEST(DescribedColors, OfAPowerBecomeLight)
{
    const auto linear = inSrgb(colorsOfPower(srgbPrimaries, 1), {55, 55, 55});
    ASSERT_EQ(linear.size(), 3U);
    for (const int component : linear)
        EXPECT_NEAR(component, 128, 1);
}

TEST(DescribedColors, ThatMakeNoSenseHaveNoProfile)
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr double none = std::numeric_limits<double>::quiet_NaN();
    for (const double exponent : {0.0, 0.01, 1000.0, infinite, none, -2.2})
        EXPECT_FALSE(profileOf(colorsOfPower(srgbPrimaries, exponent), ColorModel::rgb)) << exponent;
    const Primaries& s = srgbPrimaries;
    for (const Primaries& primaries :
         {Primaries{}, Primaries{s.white, s.red, s.red, s.blue}, Primaries{s.white, s.green, s.red, s.blue},
          Primaries{{0.9, 0.05}, s.red, s.green, s.blue}, Primaries{s.white, {0.9, 0.9}, s.green, s.blue},
          Primaries{{none, none}, s.red, s.green, s.blue}}) {
        EXPECT_FALSE(profileOf({primaries, Transfer::power, 1.8}, ColorModel::rgb));
    }
}

TEST(DescribedColors, OfUnknownCodesAreNone)
{
    EXPECT_FALSE(colorsOfCodes(3, 13));
    EXPECT_FALSE(colorsOfCodes(1, 3));
    EXPECT_FALSE(colorsOfCodes(1, 255));
}

// Signals from the tables of ITU-R BT.2100 and BT.2408.
TEST(DescribedColors, BrighterThanWhiteArePressedBelowIt)
{
    const auto grayOf = [](unsigned transfer, double signal) {
        const auto level = static_cast<std::uint8_t>(std::lround(signal * 255));
        return inSrgb(*colorsOfCodes(9, transfer), {level, level, level}).at(0);
    };
    for (const auto& [transfer, white, middle] : {std::tuple{16U, 0.58, 0.38}, {18U, 0.75, 0.38}}) {
        EXPECT_NEAR(grayOf(transfer, white), 237, 3) << "white leaves room for what is brighter";
        EXPECT_GT(grayOf(transfer, 1), 252);
        EXPECT_EQ(grayOf(transfer, 0), 0);
        EXPECT_NEAR(grayOf(transfer, middle), transfer == 16U ? 97 : 112, 12) << "darker light stays";
    }
}

TEST(DescribedColors, TakeThePlaceOfAProfile)
{
    VipsImagePtr picture = test::pictureOf(test::uniformPicture(2, 2, {1, 2, 3}));
    picture = withColors(std::move(picture), *colorsOfCodes(12, 13));
    const auto first = attachedProfile(picture.get());
    EXPECT_TRUE(describes(first, ColorModel::rgb));
    const std::vector<std::uint8_t> p3(first.begin(), first.end());
    picture = withColors(std::move(picture), {{}, Transfer::power, 1.8});
    EXPECT_EQ(attachedProfile(picture.get()).size(), p3.size()) << "nonsense changes nothing";
    picture = withColors(std::move(picture), *colorsOfCodes(9, 13));
    EXPECT_FALSE(std::ranges::equal(attachedProfile(picture.get()), p3));
    picture = withColors(std::move(picture), {});
    EXPECT_TRUE(attachedProfile(picture.get()).empty());
}

TEST(DescribedColors, OfAGrayPictureAreAGrayProfile)
{
    const VipsImagePtr picture = test::pictureOf(test::uniformPicture(2, 2, {9}));
    attachColors(picture.get(), colorsOfPower(srgbPrimaries, 1));
    EXPECT_TRUE(describes(attachedProfile(picture.get()), ColorModel::gray));
}

} // namespace
} // namespace lumora
