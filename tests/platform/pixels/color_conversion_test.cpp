// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/color_conversion.h"

#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr RowFormat gray{ColorModel::gray, false};
constexpr RowFormat rgb{ColorModel::rgb, false};
constexpr RowFormat rgba{ColorModel::rgb, true};
constexpr RowFormat cmyk{ColorModel::cmyk, false};

// One of the image library's: "srgb", "p3" or "cmyk".
Bytes profileNamed(const char* name)
{
    ensureVipsReady();
    VipsBlob* blob = nullptr;
    if (vips_profile_load(name, &blob, nullptr) != 0) throw std::runtime_error(takeVipsError().description);
    std::size_t size = 0;
    const auto* bytes = static_cast<const std::uint8_t*>(vips_blob_get(blob, &size));
    Bytes profile(bytes, bytes + size);
    vips_area_unref(VIPS_AREA(blob));
    return profile;
}

Bytes converted(const ColorConversion& conversion, const Bytes& from, std::size_t pixels)
{
    Bytes to(pixels * 4);
    conversion.run(from.data(), to.data(), pixels);
    return to;
}

TEST(SrgbProfile, IsSmallAndTheSameOnEveryDay)
{
    const ProfileBytes profile = srgbProfile();
    EXPECT_LT(profile.size(), 4096U);
    EXPECT_TRUE(describes(profile, ColorModel::rgb));
    const Bytes date(profile.begin() + 24, profile.begin() + 36);
    EXPECT_EQ(date, (Bytes{0x07, 0xD0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0})); // the first of January 2000
}

TEST(Profile, DescribesComponentsOfItsModelAlone)
{
    EXPECT_TRUE(describes(profileNamed("cmyk"), ColorModel::cmyk));
    EXPECT_FALSE(describes(profileNamed("cmyk"), ColorModel::rgb));
    EXPECT_FALSE(describes(srgbProfile(), ColorModel::gray));
    EXPECT_FALSE(describes(Bytes(200, 7), ColorModel::rgb));
    EXPECT_FALSE(describes({}, ColorModel::rgb));
}

TEST(ColorConversion, ChangesNothingForSrgbInAnyWording)
{
    EXPECT_TRUE(ColorConversion::toSrgb(rgb, profileNamed("srgb")).isIdentity());
    EXPECT_TRUE(ColorConversion::toSrgb(rgb, srgbProfile()).isIdentity());
    EXPECT_TRUE(ColorConversion::toSrgb(rgb, {}).isIdentity());
    EXPECT_TRUE(ColorConversion::toSrgb(gray, {}).isIdentity());
    EXPECT_TRUE(ColorConversion::toSrgb(rgb, profileNamed("cmyk")).isIdentity());
}

// Those met before are not looked into again.
TEST(ColorConversion, IsThatOfItsProfileAndFormatWhateverCameBefore)
{
    const Bytes wide = profileNamed("p3");
    const Bytes ink = profileNamed("cmyk");
    Bytes large = wide;
    large.resize(std::size_t{3} << 20U);
    const Bytes red{200, 100, 100};
    const Bytes out = converted(ColorConversion::toSrgb(rgb, wide), red, 1);
    const Bytes printed = converted(ColorConversion::toSrgb(cmyk, ink), {0, 255, 255, 0}, 1);
    ASSERT_NE(out, (Bytes{200, 100, 100, 255}));
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(converted(ColorConversion::toSrgb(rgb, srgbProfile()), red, 1),
                  (Bytes{200, 100, 100, 255}));
        EXPECT_EQ(converted(ColorConversion::toSrgb(rgb, wide), red, 1), out);
        EXPECT_EQ(converted(ColorConversion::toSrgb(rgb, large), red, 1), out);
        EXPECT_EQ(converted(ColorConversion::toSrgb(rgba, wide), {200, 100, 100, 50}, 1),
                  (Bytes{out[0], out[1], out[2], 50}));
        EXPECT_EQ(converted(ColorConversion::toSrgb(cmyk, ink), {0, 255, 255, 0}, 1), printed);
        EXPECT_EQ(converted(ColorConversion::toSrgb(gray, wide), {77}, 1), (Bytes{77, 77, 77, 255}));
        EXPECT_EQ(converted(ColorConversion::toSrgb(rgb, Bytes(200, 7)), red, 1),
                  (Bytes{200, 100, 100, 255}));
    }
}

TEST(ColorConversion, KeepsTheLookOfAWideGamut)
{
    const Bytes profile = profileNamed("p3");
    const auto conversion = ColorConversion::toSrgb(rgb, profile);
    EXPECT_FALSE(conversion.isIdentity());
    const Bytes out = converted(conversion, {128, 128, 128, 200, 100, 100, 255, 255, 255}, 3);
    for (const std::size_t c : {0U, 1U, 2U}) {
        EXPECT_NEAR(out[c], 128, 1);
        EXPECT_EQ(out[8 + c], 255);
    }
    // The same red lies nearer to the edge of the smaller gamut.
    EXPECT_NEAR(out[4], 213, 3);
    EXPECT_NEAR(out[5], 94, 3);
    EXPECT_EQ(out[7], 255);
}

TEST(ColorConversion, CarriesAlphaOver)
{
    const Bytes profile = profileNamed("p3");
    const Bytes out = converted(ColorConversion::toSrgb(rgba, profile), {200, 100, 100, 77, 0, 0, 0, 0}, 2);
    EXPECT_EQ(out[3], 77);
    EXPECT_EQ(out[7], 0);
    EXPECT_EQ(converted(ColorConversion::none(rgba), {1, 2, 3, 4}, 1), (Bytes{1, 2, 3, 4}));
}

TEST(ColorConversion, TakesInksWithoutAProfileForPrinting)
{
    const auto conversion = ColorConversion::toSrgb(cmyk, {});
    EXPECT_FALSE(conversion.isIdentity());
    const Bytes out = converted(conversion, {0, 0, 0, 0, 255, 255, 255, 255, 255, 0, 0, 0}, 3);
    EXPECT_TRUE(std::all_of(out.begin(), out.begin() + 4, [](std::uint8_t c) { return c >= 253; }));
    EXPECT_TRUE(std::all_of(out.begin() + 4, out.begin() + 7, [](std::uint8_t c) { return c <= 40; }));
    EXPECT_LT(out[8], 60) << "cyan is not red";
    EXPECT_GT(out[10], 180) << "cyan is blue";
}

TEST(ColorConversion, WidensGrayToThreeEqualComponents)
{
    EXPECT_EQ(converted(ColorConversion::none(gray), {0, 9, 255}, 3),
              (Bytes{0, 0, 0, 255, 9, 9, 9, 255, 255, 255, 255, 255}));
    EXPECT_EQ(converted(ColorConversion::none({ColorModel::gray, true}), {9, 70}, 1), (Bytes{9, 9, 9, 70}));
}

// Of exactly so many bytes, so that a sanitizer sees a read behind the last.
TEST(ColorConversion, WidensOpaqueColoursToTheLastPixel)
{
    for (std::size_t pixels = 0; pixels < 6; ++pixels) {
        Bytes from;
        Bytes expected;
        for (std::size_t i = 0; i < pixels; ++i) {
            const auto c = static_cast<std::uint8_t>(10 * i);
            for (const int step : {1, 2, 3}) {
                from.push_back(static_cast<std::uint8_t>(c + step));
                expected.push_back(static_cast<std::uint8_t>(c + step));
            }
            expected.push_back(255);
        }
        from.shrink_to_fit();
        EXPECT_EQ(converted(ColorConversion::none(rgb), from, pixels), expected);
    }
}

} // namespace
} // namespace lumora
