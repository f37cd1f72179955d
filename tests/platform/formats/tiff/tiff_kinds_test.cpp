// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of TIFF files of every depth, kind of sample, layout and compression.
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "pixels/drawing.h"
#include "tests/platform/formats/tiff/tiff_builder.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <vips/vips.h>

#include <algorithm>

namespace lumora {
namespace {

using test::TiffKind;

class TiffOf : public testing::TestWithParam<TiffKind>
{
protected:
    Result<Image> decoded()
    {
        const test::TiffBuilder builder(m_file, GetParam());
        const auto source = ImageSource::open(m_file);
        if (!source) return source.error();
        return decode(source->image());
    }

    // What the decoded picture has there, from 0 to 1.
    static double component(VipsImage* image, int x, int y, int band)
    {
        const int index = (y * vips_image_get_width(image) + x) * vips_image_get_bands(image) + band;
        const void* const components = vips_image_get_data(image);
        switch (vips_image_get_format(image)) {
        case VIPS_FORMAT_UCHAR:
            return static_cast<const std::uint8_t*>(components)[index] / 255.0;
        case VIPS_FORMAT_USHORT:
            return static_cast<const std::uint16_t*>(components)[index] / 65535.0;
        default:
            EXPECT_EQ(vips_image_get_format(image), VIPS_FORMAT_FLOAT);
            return static_cast<const float*>(components)[index];
        }
    }

    // The largest difference from what `expected` says.
    template <class Expected>
    static double error(VipsImage* image, Expected expected)
    {
        double largest = 0;
        for (int y = 0; y < test::tiffHeight; ++y) {
            for (int x = 0; x < test::tiffWidth; ++x) {
                for (int band = 0; band < vips_image_get_bands(image); ++band)
                    largest =
                        std::max(largest, std::abs(component(image, x, y, band) - expected(x, y, band)));
            }
        }
        return largest;
    }

    static double tolerance()
    {
        const TiffKind& kind = GetParam();
        const bool isLossy = kind.compression == COMPRESSION_JPEG || kind.compression == COMPRESSION_WEBP;
        const double step =
            kind.format == SAMPLEFORMAT_IEEEFP ? 1 / 2048.0 : 1 / (std::ldexp(1, kind.bits) - 1);
        const double mixed = kind.extra == EXTRASAMPLE_ASSOCALPHA ? 2 : 1;
        return isLossy ? 0.08 : std::max(1e-6, mixed * step);
    }

    test::TemporaryDirectory m_folder;
    std::filesystem::path m_file = m_folder / "a.tif";
};

TEST_P(TiffOf, PlainComponentsShowsThem)
{
    const auto image = decoded();
    ASSERT_TRUE(image) << image.error().description;
    ASSERT_EQ(vips_image_get_bands(image->pixels()), GetParam().samples);
    EXPECT_LE(error(image->pixels(), test::tiffValue), tolerance());
}

// Of the picture as it is written when it is redrawn.
TEST_P(TiffOf, PlainComponentsCanBeRedrawn)
{
    const test::TiffBuilder builder(m_file, GetParam());
    const auto source = ImageSource::open(m_file);
    ASSERT_TRUE(source);
    const auto drawn = draw(source->image(), {test::tiffWidth, test::tiffHeight, ColorSpace::deviceRGB});
    ASSERT_TRUE(drawn) << drawn.error().description;
    if (GetParam().photometric == PHOTOMETRIC_SEPARATED) return;
    const bool isGray = GetParam().samples < 3;
    const bool hasAlpha = GetParam().extra >= 0;
    const auto expected = [&](int x, int y, int band) {
        const double alpha = hasAlpha ? test::tiffValue(x, y, GetParam().samples - 1) : 1;
        return band == 3 ? alpha : alpha * test::tiffValue(x, y, isGray ? 0 : band);
    };
    EXPECT_LE(error(drawn->pixels(), expected), std::max(tolerance(), 1.01 / 255));
}

constexpr auto real = SAMPLEFORMAT_IEEEFP;
constexpr auto integer = SAMPLEFORMAT_INT;
constexpr auto black = PHOTOMETRIC_MINISBLACK;
constexpr auto white = PHOTOMETRIC_MINISWHITE;
constexpr auto inks = PHOTOMETRIC_SEPARATED;
const auto nameOf = [](const auto& instance) { return std::string(instance.param.name); };

INSTANTIATE_TEST_SUITE_P(
    Grey, TiffOf,
    testing::Values(
        TiffKind{.name = "Grey2", .bits = 2, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey4", .bits = 4, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey6", .bits = 6, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey8", .photometric = black, .samples = 1},
        TiffKind{.name = "Grey10", .bits = 10, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey12", .bits = 12, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey14", .bits = 14, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey16", .bits = 16, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey24", .bits = 24, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey32", .bits = 32, .photometric = black, .samples = 1},
        TiffKind{.name = "Grey64", .bits = 64, .photometric = black, .samples = 1},
        TiffKind{.name = "White4", .bits = 4, .photometric = white, .samples = 1},
        TiffKind{.name = "White8", .photometric = white, .samples = 1},
        TiffKind{.name = "White16", .bits = 16, .photometric = white, .samples = 1},
        TiffKind{.name = "White32", .bits = 32, .photometric = white, .samples = 1},
        TiffKind{.name = "Signed8", .format = integer, .photometric = black, .samples = 1},
        TiffKind{.name = "Signed12", .bits = 12, .format = integer, .photometric = black, .samples = 1},
        TiffKind{.name = "Signed16", .bits = 16, .format = integer, .photometric = black, .samples = 1},
        TiffKind{.name = "Signed32", .bits = 32, .format = integer, .photometric = black, .samples = 1},
        TiffKind{.name = "Signed64", .bits = 64, .format = integer, .photometric = black, .samples = 1},
        TiffKind{.name = "SignedWhite16", .bits = 16, .format = integer, .photometric = white, .samples = 1},
        TiffKind{.name = "Real16", .bits = 16, .format = real, .photometric = black, .samples = 1},
        TiffKind{.name = "Real24", .bits = 24, .format = real, .photometric = black, .samples = 1},
        TiffKind{.name = "Real32", .bits = 32, .format = real, .photometric = black, .samples = 1},
        TiffKind{.name = "Real64", .bits = 64, .format = real, .photometric = black, .samples = 1},
        TiffKind{.name = "RealWhite32", .bits = 32, .format = real, .photometric = white, .samples = 1}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Colours, TiffOf,
    testing::Values(TiffKind{.name = "Rgb4", .bits = 4}, TiffKind{.name = "Rgb8"},
                    TiffKind{.name = "Rgb12", .bits = 12}, TiffKind{.name = "Rgb16", .bits = 16},
                    TiffKind{.name = "Rgb32", .bits = 32}, TiffKind{.name = "Rgb64", .bits = 64},
                    TiffKind{.name = "SignedRgb16", .bits = 16, .format = integer},
                    TiffKind{.name = "RealRgb16", .bits = 16, .format = real},
                    TiffKind{.name = "RealRgb32", .bits = 32, .format = real},
                    TiffKind{.name = "RealRgb64", .bits = 64, .format = real},
                    TiffKind{.name = "Inks8", .photometric = inks, .samples = 4},
                    TiffKind{.name = "Inks16", .bits = 16, .photometric = inks, .samples = 4},
                    TiffKind{.name = "Inks32", .bits = 32, .photometric = inks, .samples = 4},
                    TiffKind{
                        .name = "RealInks32", .bits = 32, .format = real, .photometric = inks, .samples = 4}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Ranges, TiffOf,
    testing::Values(
        TiffKind{.name = "RealOutside",
                 .bits = 32,
                 .format = real,
                 .photometric = black,
                 .samples = 1,
                 .black = -5,
                 .white = 1000},
        TiffKind{.name = "RealTo255", .bits = 32, .format = real, .white = 255},
        TiffKind{
            .name = "RealDeclared", .bits = 32, .format = real, .black = -1, .white = 3, .isDeclared = true},
        TiffKind{.name = "DoubleDeclared",
                 .bits = 64,
                 .format = real,
                 .black = 10,
                 .white = 20,
                 .isDeclared = true},
        TiffKind{.name = "Declared32", .bits = 32, .white = 1'000'000, .isDeclared = true},
        TiffKind{.name = "SignedDeclared32",
                 .bits = 32,
                 .format = integer,
                 .photometric = black,
                 .samples = 1,
                 .black = -40'000'000,
                 .white = 70'000'000,
                 .isDeclared = true},
        TiffKind{.name = "WhiteDeclared32",
                 .bits = 32,
                 .photometric = white,
                 .samples = 1,
                 .black = 1000,
                 .white = 2'000'000,
                 .isDeclared = true}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Alpha, TiffOf,
    testing::Values(
        TiffKind{.name = "Straight8", .samples = 4, .extra = EXTRASAMPLE_UNASSALPHA},
        TiffKind{.name = "Straight16", .bits = 16, .samples = 4, .extra = EXTRASAMPLE_UNASSALPHA},
        TiffKind{.name = "Straight32", .bits = 32, .samples = 4, .extra = EXTRASAMPLE_UNASSALPHA},
        TiffKind{.name = "RealStraight",
                 .bits = 32,
                 .format = real,
                 .samples = 4,
                 .extra = EXTRASAMPLE_UNASSALPHA},
        TiffKind{.name = "Mixed8", .samples = 4, .extra = EXTRASAMPLE_ASSOCALPHA},
        TiffKind{.name = "Mixed16", .bits = 16, .samples = 4, .extra = EXTRASAMPLE_ASSOCALPHA},
        TiffKind{.name = "Mixed32", .bits = 32, .samples = 4, .extra = EXTRASAMPLE_ASSOCALPHA},
        TiffKind{
            .name = "RealMixed", .bits = 32, .format = real, .samples = 4, .extra = EXTRASAMPLE_ASSOCALPHA}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Layouts, TiffOf,
    testing::Values(
        TiffKind{.name = "Planes8", .isPlanar = true},
        TiffKind{.name = "Planes16", .bits = 16, .isPlanar = true},
        TiffKind{.name = "Planes12", .bits = 12, .isPlanar = true},
        TiffKind{.name = "RealPlanes", .bits = 32, .format = real, .isPlanar = true},
        TiffKind{.name = "Tiles8", .isTiled = true}, TiffKind{.name = "Tiles12", .bits = 12, .isTiled = true},
        TiffKind{.name = "Tiles32", .bits = 32, .isTiled = true},
        TiffKind{.name = "TiledPlanes8", .isPlanar = true, .isTiled = true},
        TiffKind{.name = "RealTiledPlanes", .bits = 32, .format = real, .isPlanar = true, .isTiled = true}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Compressions, TiffOf,
    testing::Values(TiffKind{.name = "Lzw", .compression = COMPRESSION_LZW},
                    TiffKind{.name = "Deflate", .compression = COMPRESSION_ADOBE_DEFLATE},
                    TiffKind{.name = "OldDeflate", .compression = COMPRESSION_DEFLATE},
                    TiffKind{.name = "PackBits", .compression = COMPRESSION_PACKBITS},
                    TiffKind{.name = "Jpeg", .compression = COMPRESSION_JPEG},
                    TiffKind{.name = "JpegDifferences",
                             .photometric = PHOTOMETRIC_YCBCR,
                             .compression = COMPRESSION_JPEG},
                    TiffKind{.name = "JpegHalvedTiles",
                             .photometric = PHOTOMETRIC_YCBCR,
                             .compression = COMPRESSION_JPEG,
                             .isTiled = true,
                             .halving = 2},
                    TiffKind{.name = "Zstd", .compression = COMPRESSION_ZSTD},
                    TiffKind{.name = "Lzma", .compression = COMPRESSION_LZMA},
                    TiffKind{.name = "WebP", .compression = COMPRESSION_WEBP},
                    TiffKind{.name = "LzwTiles16",
                             .bits = 16,
                             .compression = COMPRESSION_LZW,
                             .isTiled = true,
                             .predictor = 2},
                    TiffKind{.name = "Lzw32", .bits = 32, .compression = COMPRESSION_LZW, .predictor = 2},
                    TiffKind{.name = "RealDeflate",
                             .bits = 32,
                             .format = real,
                             .compression = COMPRESSION_ADOBE_DEFLATE,
                             .predictor = 3}),
    nameOf);

using TiffOfWriting = TiffOf;

TEST_P(TiffOfWriting, IsBlackAndWhite)
{
    const auto image = decoded();
    ASSERT_TRUE(image) << image.error().description;
    const auto written = [](int x, int, int) { return x < test::tiffWidth / 2 ? 0.0 : 1.0; };
    EXPECT_EQ(error(image->pixels(), written), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Compressions, TiffOfWriting,
    testing::Values(
        TiffKind{.name = "Black", .bits = 1, .photometric = black, .samples = 1},
        TiffKind{.name = "White", .bits = 1, .photometric = white, .samples = 1},
        TiffKind{.name = "Runs",
                 .bits = 1,
                 .photometric = white,
                 .samples = 1,
                 .compression = COMPRESSION_CCITTRLE},
        TiffKind{.name = "Group3",
                 .bits = 1,
                 .photometric = white,
                 .samples = 1,
                 .compression = COMPRESSION_CCITTFAX3},
        TiffKind{.name = "Group4",
                 .bits = 1,
                 .photometric = black,
                 .samples = 1,
                 .compression = COMPRESSION_CCITTFAX4},
        TiffKind{
            .name = "Jbig", .bits = 1, .photometric = white, .samples = 1, .compression = COMPRESSION_JBIG}),
    nameOf);

using TiffOfPalette = TiffOf;

TEST_P(TiffOfPalette, ShowsItsColours)
{
    const auto image = decoded();
    ASSERT_TRUE(image) << image.error().description;
    ASSERT_EQ(vips_image_get_bands(image->pixels()), 3);
    const auto colors = [](int x, int y, int band) {
        const double red = test::tiffValue(x, y, 0);
        return band == 0 ? red : band == 1 ? 1 - red : 0;
    };
    EXPECT_LE(error(image->pixels(), colors), 1 / (std::ldexp(1, GetParam().bits) - 1));
}

INSTANTIATE_TEST_SUITE_P(
    Bits, TiffOfPalette,
    testing::Values(TiffKind{.name = "Palette1", .bits = 1, .photometric = PHOTOMETRIC_PALETTE, .samples = 1},
                    TiffKind{.name = "Palette4", .bits = 4, .photometric = PHOTOMETRIC_PALETTE, .samples = 1},
                    TiffKind{.name = "Palette8", .photometric = PHOTOMETRIC_PALETTE, .samples = 1},
                    TiffKind{
                        .name = "Palette16", .bits = 16, .photometric = PHOTOMETRIC_PALETTE, .samples = 1}),
    nameOf);

using TiffOfDifferences = TiffOf;

TEST_P(TiffOfDifferences, ShowsItsBrightness)
{
    const auto image = decoded();
    ASSERT_TRUE(image) << image.error().description;
    ASSERT_EQ(vips_image_get_bands(image->pixels()), 3);
    EXPECT_LE(error(image->pixels(), [](int x, int y, int) { return test::tiffValue(x, y, 0); }), 1.01 / 255);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, TiffOfDifferences,
    testing::Values(TiffKind{.name = "Halved", .photometric = PHOTOMETRIC_YCBCR, .halving = 2},
                    TiffKind{.name = "HalvedLzw",
                             .photometric = PHOTOMETRIC_YCBCR,
                             .compression = COMPRESSION_LZW,
                             .halving = 2},
                    TiffKind{.name = "Quartered", .photometric = PHOTOMETRIC_YCBCR, .halving = 4}),
    nameOf);

using TiffOfNobody = TiffOf;

TEST_P(TiffOfNobody, IsUnreadable)
{
    EXPECT_FALSE(decoded());
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, TiffOfNobody,
    testing::Values(TiffKind{.name = "Complex",
                             .bits = 64,
                             .format = SAMPLEFORMAT_COMPLEXIEEEFP,
                             .photometric = black,
                             .samples = 1},
                    TiffKind{.name = "Lab32", .bits = 32, .photometric = PHOTOMETRIC_CIELAB},
                    TiffKind{.name = "IccLab", .photometric = PHOTOMETRIC_ICCLAB},
                    TiffKind{.name = "OtherInks", .photometric = inks, .samples = 4, .inks = INKSET_MULTIINK},
                    TiffKind{.name = "SensorMosaic", .photometric = PHOTOMETRIC_CFA, .samples = 1},
                    TiffKind{.name = "TooFewSamples", .samples = 2}),
    nameOf);

} // namespace
} // namespace lumora
