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

Bytes converted(const ColorConversion& conversion, RowFormat format, const Bytes& from)
{
    const std::size_t pixels = from.size() / static_cast<std::size_t>(format.bands());
    Bytes to(pixels * static_cast<std::size_t>(format.drawnBands()));
    conversion.run(from.data(), to.data(), pixels);
    return to;
}

Bytes inSrgb(RowFormat format, ProfileBytes profile, const Bytes& from)
{
    return converted(ColorConversion::toSrgb(format, profile), format, from);
}

Bytes asItIs(RowFormat format, const Bytes& from)
{
    return converted(ColorConversion::none(format), format, from);
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
    const Bytes out = inSrgb(rgb, wide, red);
    const Bytes printed = inSrgb(cmyk, ink, {0, 255, 255, 0});
    ASSERT_NE(out, red);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(inSrgb(rgb, srgbProfile(), red), red);
        EXPECT_EQ(inSrgb(rgb, wide, red), out);
        EXPECT_EQ(inSrgb(rgb, large, red), out);
        EXPECT_EQ(inSrgb(rgba, wide, {200, 100, 100, 50}), (Bytes{out[0], out[1], out[2], 50}));
        EXPECT_EQ(inSrgb(cmyk, ink, {0, 255, 255, 0}), printed);
        EXPECT_EQ(inSrgb(gray, wide, {77}), (Bytes{77, 77, 77}));
        EXPECT_EQ(inSrgb(rgb, Bytes(200, 7), red), red);
    }
}

TEST(ColorConversion, KeepsTheLookOfAWideGamut)
{
    const Bytes profile = profileNamed("p3");
    const auto conversion = ColorConversion::toSrgb(rgb, profile);
    EXPECT_FALSE(conversion.isIdentity());
    const Bytes out = converted(conversion, rgb, {128, 128, 128, 200, 100, 100, 255, 255, 255});
    for (const std::size_t c : {0U, 1U, 2U}) {
        EXPECT_NEAR(out[c], 128, 1);
        EXPECT_EQ(out[6 + c], 255);
    }
    // The same red lies nearer to the edge of the smaller gamut.
    EXPECT_NEAR(out[3], 213, 3);
    EXPECT_NEAR(out[4], 94, 3);
}

TEST(ColorConversion, CarriesAlphaOver)
{
    const Bytes profile = profileNamed("p3");
    const Bytes out = inSrgb(rgba, profile, {200, 100, 100, 77, 0, 0, 0, 0});
    EXPECT_EQ(out[3], 77);
    EXPECT_EQ(out[7], 0);
    EXPECT_EQ(asItIs(rgba, {1, 2, 3, 4}), (Bytes{1, 2, 3, 4}));
}

TEST(ColorConversion, TakesInksWithoutAProfileForPrinting)
{
    const auto conversion = ColorConversion::toSrgb(cmyk, {});
    EXPECT_FALSE(conversion.isIdentity());
    const Bytes out = converted(conversion, cmyk, {0, 0, 0, 0, 255, 255, 255, 255, 255, 0, 0, 0});
    EXPECT_TRUE(std::all_of(out.begin(), out.begin() + 3, [](std::uint8_t c) { return c >= 253; }));
    EXPECT_TRUE(std::all_of(out.begin() + 3, out.begin() + 6, [](std::uint8_t c) { return c <= 40; }));
    EXPECT_LT(out[6], 60) << "cyan is not red";
    EXPECT_GT(out[8], 180) << "cyan is blue";
}

TEST(ColorConversion, MakesThreeEqualComponentsOfGray)
{
    EXPECT_EQ(asItIs(gray, {0, 9, 255}), (Bytes{0, 0, 0, 9, 9, 9, 255, 255, 255}));
    EXPECT_EQ(asItIs({ColorModel::gray, true}, {9, 70}), (Bytes{9, 9, 9, 70}));
}

TEST(ColorConversion, LeavesColoursWithoutATransformAsTheyAre)
{
    EXPECT_EQ(asItIs(rgb, {1, 2, 3, 4, 5, 6}), (Bytes{1, 2, 3, 4, 5, 6}));
}

} // namespace
} // namespace lumora
