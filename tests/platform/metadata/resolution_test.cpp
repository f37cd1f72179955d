// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/resolution.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumora {
namespace {

std::string number(std::uint32_t value)
{
    std::string bytes;
    for (const unsigned shift : {0U, 8U, 16U, 24U})
        bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}

MetadataField rational(const char* key, std::uint32_t numerator, std::uint32_t denominator = 1)
{
    return {key, 5, number(numerator) + number(denominator)};
}

MetadataFields dots(std::uint32_t x, std::uint32_t y, std::uint16_t unit = 0)
{
    MetadataFields fields{rational("Exif.Image.XResolution", x), rational("Exif.Image.YResolution", y)};
    if (unit != 0) fields.push_back({"Exif.Image.ResolutionUnit", 3, number(unit).substr(0, 2)});
    return fields;
}

TEST(ResolutionOf, IsThatOfThePngThenOfExifThenOfJfif)
{
    Metadata metadata{.tiff = dots(300, 150), .pngDensity = {96, 97}, .jfifDensity = {72, 73}};
    EXPECT_EQ(resolutionOf(metadata), (Resolution{96, 97}));
    metadata.pngDensity = {};
    EXPECT_EQ(resolutionOf(metadata), (Resolution{300, 150}));
    metadata.tiff = {};
    EXPECT_EQ(resolutionOf(metadata), (Resolution{72, 73}));
    metadata.jfifDensity = {};
    EXPECT_EQ(resolutionOf(metadata), Resolution{});
}

TEST(ResolutionOf, CountsDotsAnInchWhateverTheUnit)
{
    EXPECT_EQ(resolutionOf({.tiff = dots(300, 150, 2)}), (Resolution{300, 150}));
    const Resolution resolution = resolutionOf({.tiff = dots(100, 50, 3)});
    EXPECT_DOUBLE_EQ(resolution.x, 254);
    EXPECT_DOUBLE_EQ(resolution.y, 127);
}

TEST(ResolutionOf, PassesOverWhatNoPictureHas)
{
    constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
    constexpr double endless = std::numeric_limits<double>::infinity();
    for (const Resolution& wrong : {Resolution{0.5, 300}, Resolution{300, 65536}, Resolution{-72, -72},
                                    Resolution{nothing, 300}, Resolution{300, endless}}) {
        EXPECT_EQ(resolutionOf({.pngDensity = wrong, .jfifDensity = {72, 72}}), (Resolution{72, 72}));
    }
    EXPECT_EQ(resolutionOf({.jfifDensity = {1, 65535}}), (Resolution{1, 65535}));
}

TEST(ResolutionOf, PassesOverDamagedFields)
{
    const Resolution jfif{72, 72};
    const MetadataFields withoutDenominator{rational("Exif.Image.XResolution", 300, 0),
                                            rational("Exif.Image.YResolution", 300, 0)};
    EXPECT_EQ(resolutionOf({.tiff = withoutDenominator, .jfifDensity = jfif}), jfif);
    const MetadataFields empty{{"Exif.Image.XResolution", 5, ""}, {"Exif.Image.YResolution", 5, ""}};
    EXPECT_EQ(resolutionOf({.tiff = empty, .jfifDensity = jfif}), jfif);
    MetadataFields unknownKey = dots(300, 300);
    unknownKey.push_back({"Exif.Nowhere.XResolution", 5, number(1) + number(1)});
    EXPECT_EQ(resolutionOf({.tiff = unknownKey, .jfifDensity = jfif}), (Resolution{300, 300}));
}

} // namespace
} // namespace lumora
