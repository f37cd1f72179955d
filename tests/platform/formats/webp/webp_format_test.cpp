// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "format_io.h"
#include "tests/platform/formats/written_pictures.h"
#include "tests/support/fake_encoder.h"

#include <exiv2/exiv2.hpp>

namespace lumora {
namespace {

using WebP = test::WrittenPictures;

TEST_F(WebP, GivesItsPicture)
{
    const test::Pixels pixels = test::corneredPicture(32, 24);
    test::save(m_folder / "a.webp", pixels);
    EXPECT_EQ(test::load(written(asStored(m_folder / "a.webp"), "public.png")).bytes, pixels.bytes);
}

TEST_F(WebP, BringsItsMetadataAlong)
{
    test::save(m_folder / "a.webp", test::corneredPicture(32, 24));
    const auto image = Exiv2::ImageFactory::open((m_folder / "a.webp").string());
    image->readMetadata();
    image->exifData()["Exif.Image.Make"] = "Maker";
    image->exifData()["Exif.Photo.LensModel"] = "A lens";
    image->exifData()["Exif.GPSInfo.GPSLatitudeRef"] = "N";
    image->xmpData()["Xmp.dc.source"] = "some words";
    image->writeMetadata();
    const auto source = ImageSource::open(m_folder / "a.webp");
    ASSERT_TRUE(source);
    test::expectSomeMetadata(source->metadata(), false);
}

TEST_F(WebP, GivesItsFirstFrame)
{
    test::Pixels frames = test::uniformPicture(8, 16, {250, 0, 0});
    for (std::size_t i = std::size_t{8} * 8 * 3; i < frames.bytes.size(); i += 3)
        frames.bytes[i] = 10;
    test::save(m_folder / "a.webp", frames, {.pageHeight = 8});
    const auto source = ImageSource::open(m_folder / "a.webp");
    ASSERT_TRUE(source);
    EXPECT_EQ(source->image().height(), 8);
    EXPECT_EQ(test::load(written(asStored(m_folder / "a.webp"), "public.png")).at(4, 7)[0], 250);
}

} // namespace
} // namespace lumora
