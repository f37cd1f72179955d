// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/resolution.h"
#include "pixels/stored_form.h"
#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>
#include <tiffio.h>

namespace lumora {
namespace {

using Tiff = test::WrittenPictures;

test::Pixels stripes()
{
    test::Pixels pixels{32, 32, 1, {}};
    for (int i = 0; i < 32 * 32; ++i)
        pixels.bytes.push_back(i / 7 % 2 == 0 ? 255 : 0);
    return pixels;
}

TEST_F(Tiff, ComesBackExactly)
{
    const test::Pixels pixels = test::corneredPicture(64, 48);
    EXPECT_EQ(test::load(written(redrawn(pixels), "public.tiff")).bytes, pixels.bytes);
}

// The image library takes no longer edges, and would make room for one pixel.
TEST_F(Tiff, WithTooLongAnEdgeIsUnreadable)
{
    constexpr std::uint32_t longest = 10'000'000;
    const auto isReadWith = [&](std::uint32_t width, std::uint32_t height) {
        TIFF* const tiff = TIFFOpen((m_folder / "a.tif").c_str(), "w");
        TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, width);
        TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, height);
        TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1);
        TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
        TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
        TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, height);
        std::vector<std::uint8_t> strip((width + 7) / 8 * std::size_t{height});
        TIFFWriteEncodedStrip(tiff, 0, strip.data(), static_cast<tmsize_t>(strip.size()));
        TIFFClose(tiff);
        return static_cast<bool>(ImageSource::open(m_folder / "a.tif"));
    };
    EXPECT_TRUE(isReadWith(longest, 1));
    EXPECT_FALSE(isReadWith(longest + 1, 1));
    EXPECT_TRUE(isReadWith(1, longest));
    EXPECT_FALSE(isReadWith(1, longest + 1));
}

TEST_F(Tiff, KeepsDepthAndInk)
{
    const auto deep = written(asStored(test::corneredPicture(32, 24), {.sixteenBits = true}), "public.tiff");
    EXPECT_EQ(test::inspect(deep).bits, 16);
    EXPECT_EQ(test::load(deep).bytes, test::corneredPicture(32, 24).bytes);
    const test::Pixels inks = test::uniformPicture(8, 8, {10, 20, 30, 40});
    const auto ink =
        written(asStored(inks, {.profile = "cmyk", .inkToCmyk = true}, "ink.tif"), "public.tiff");
    EXPECT_EQ(test::load(ink).bytes, inks.bytes);
    EXPECT_TRUE(test::inspect(ink).hasProfile);
}

TEST_F(Tiff, OfBlackAndWhiteStaysOneBitAPixelUnlessItIsRedrawn)
{
    const auto bitsOf = [](const std::filesystem::path& file) {
        const auto source = ImageSource::open(file);
        EXPECT_TRUE(source);
        return storedForm(source->image().pixels()).bits;
    };
    const auto kept = written(asStored(stripes(), {.bits = 1}, "a.tif"), "public.tiff");
    ASSERT_EQ(bitsOf(m_folder / "a.tif"), 1);
    EXPECT_EQ(bitsOf(kept), 1);
    EXPECT_EQ(test::load(kept).bytes, stripes().bytes);
    EXPECT_EQ(bitsOf(written(redrawn(stripes()), "public.tiff")), 8);
}

TEST_F(Tiff, HoldsMetadataOfAllKinds)
{
    Metadata metadata = test::someMetadata();
    metadata.pngDensity = {300, 150};
    const test::Pixels pixels = test::corneredPicture(16, 12);
    const auto file = written(redrawn(pixels), "public.tiff", 1, metadata);
    const auto source = ImageSource::open(file);
    ASSERT_TRUE(source);
    test::expectSomeMetadata(source->metadata());
    const Resolution resolution = resolutionOf(source->metadata());
    EXPECT_NEAR(resolution.x, 300, 0.01);
    EXPECT_NEAR(resolution.y, 150, 0.01);
    EXPECT_EQ(test::load(file).bytes, pixels.bytes);
}

TEST_F(Tiff, GivesItsFirstPage)
{
    test::Pixels pages = test::uniformPicture(8, 16, {250, 0, 0});
    for (std::size_t i = std::size_t{8} * 8 * 3; i < pages.bytes.size(); i += 3)
        pages.bytes[i] = 10;
    test::save(m_folder / "a.tif", pages, {.pageHeight = 8});
    const auto source = ImageSource::open(m_folder / "a.tif");
    ASSERT_TRUE(source);
    EXPECT_EQ(source->image().height(), 8);
}

} // namespace
} // namespace lumora
