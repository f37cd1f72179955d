// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/blocks.h"

#include "exiv2_library.h"
#include "metadata/reading.h"
#include "tests/support/files.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <span>

namespace lumora {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

const PictureFacts smallPicture{64, 48, true, {}};

MetadataField text(const char* key, std::string value)
{
    return {key, 2, std::move(value) + '\0'};
}

MetadataField shortNumber(const char* key, char value)
{
    return {key, 3, std::string{value, '\0'}};
}

class ExifBlock : public testing::Test
{
protected:
    // The value as the metadata library reads it from the block.
    static std::string valueIn(const std::string& block, const char* key)
    {
        ensureExiv2Ready();
        Exiv2::ExifData data;
        Exiv2::ExifParser::decode(data, bytesOf(block), static_cast<std::uint32_t>(block.size()));
        const auto found = data.findKey(Exiv2::ExifKey(key));
        return found == data.end() ? "none" : found->toString();
    }
    std::string valueOf(const char* key) const { return valueIn(exifBlock(m_metadata, m_facts), key); }

    Metadata m_metadata{.tiff = {text("Exif.Image.Make", "Maker")}};
    PictureFacts m_facts = smallPicture;
};

TEST_F(ExifBlock, IsEmptyWhereThereIsNothingToSay)
{
    EXPECT_THAT(exifBlock({}, smallPicture), IsEmpty());
    EXPECT_THAT(exifBlock({.tiff = {shortNumber("Exif.Image.Orientation", 6)}}, smallPicture), IsEmpty());
}

TEST_F(ExifBlock, HoldsTheFieldsOfAllThreeGroups)
{
    m_metadata.exif = {{"Exif.Photo.ExposureTime", 5, std::string("\1\0\0\0\x7D\0\0\0", 8)}};
    m_metadata.gps = {text("Exif.GPSInfo.GPSLatitudeRef", "N")};
    EXPECT_EQ(valueOf("Exif.Image.Make"), "Maker");
    EXPECT_EQ(valueOf("Exif.Photo.ExposureTime"), "1/125");
    EXPECT_EQ(valueOf("Exif.GPSInfo.GPSLatitudeRef"), "N");
}

TEST_F(ExifBlock, SpeaksOfTheNewPicture)
{
    m_metadata.exif = {shortNumber("Exif.Photo.PixelXDimension", 99), shortNumber("Exif.Photo.ColorSpace", 2),
                       text("Exif.Iop.InteroperabilityIndex", "R03")};
    EXPECT_EQ(valueOf("Exif.Photo.PixelXDimension"), "64");
    EXPECT_EQ(valueOf("Exif.Photo.PixelYDimension"), "48");
    EXPECT_EQ(valueOf("Exif.Photo.ColorSpace"), "1");
    EXPECT_EQ(valueOf("Exif.Iop.InteroperabilityIndex"), "R98");
    m_facts.isSrgb = false;
    EXPECT_EQ(valueOf("Exif.Photo.ColorSpace"), "65535");
    EXPECT_EQ(valueOf("Exif.Iop.InteroperabilityIndex"), "R03");
}

TEST_F(ExifBlock, SaysWhereAJpegsColoursLie)
{
    EXPECT_EQ(valueOf("Exif.Image.YCbCrPositioning"), "none");
    m_facts.isJpegColor = true;
    EXPECT_EQ(valueOf("Exif.Image.YCbCrPositioning"), "1");
}

TEST_F(ExifBlock, LeavesOutHowTheSourceStoredItsPixels)
{
    for (const char* key : {"Exif.Image.Orientation", "Exif.Image.Compression", "Exif.Image.BitsPerSample",
                            "Exif.Image.StripOffsets", "Exif.Image.ImageWidth"}) {
        m_metadata.tiff.push_back(shortNumber(key, 6));
    }
    m_metadata.tiff.push_back(text("Exif.Image.Copyright", "The author"));
    const std::string block = exifBlock(m_metadata, m_facts);
    for (std::size_t i = 1; i + 1 < m_metadata.tiff.size(); ++i)
        EXPECT_EQ(valueIn(block, m_metadata.tiff[i].key.c_str()), "none") << m_metadata.tiff[i].key;
    EXPECT_EQ(valueIn(block, "Exif.Image.Copyright"), "The author");
}

TEST_F(ExifBlock, LosesOnlyTheFieldThatCannotBeWritten)
{
    m_metadata.exif = {text("Exif.Nowhere.Unheard", "x"),
                       {"Exif.Photo.ExposureTime", 999, "?"},
                       text("Exif.Photo.LensModel", "A lens")};
    EXPECT_EQ(valueOf("Exif.Image.Make"), "Maker");
    EXPECT_EQ(valueOf("Exif.Photo.LensModel"), "A lens");
}

TEST_F(ExifBlock, CountsAsEmptyWhenItCannotBeMade)
{
    m_metadata.tiff = {text("no key at all", "x")};
    EXPECT_THAT(exifBlock(m_metadata, m_facts), IsEmpty());
}

Exiv2::IptcData recordsOf(const std::string& block)
{
    ensureExiv2Ready();
    const std::uint8_t* records = nullptr;
    std::uint32_t headerSize = 0;
    std::uint32_t size = 0;
    Exiv2::IptcData data;
    EXPECT_EQ(Exiv2::Photoshop::locateIptcIrb(bytesOf(block), static_cast<long>(block.size()), &records,
                                              &headerSize, &size),
              0);
    Exiv2::IptcParser::decode(data, records + headerSize, size);
    return data;
}

TEST(IptcBlock, HoldsEveryRecordThatCanBeWritten)
{
    const Metadata metadata{.iptc = {{"Iptc.Application2.Keywords", 6, "harbour"},
                                     {"Iptc.Nowhere.Unheard", 6, "x"},
                                     {"Iptc.Application2.Keywords", 6, "evening"}}};
    std::vector<std::string> words;
    for (const auto& datum : recordsOf(iptcBlock(metadata)))
        words.push_back(datum.toString());
    EXPECT_THAT(words, testing::ElementsAre("harbour", "evening"));
    EXPECT_THAT(iptcBlock({}), IsEmpty());
}

class TiffMetadata : public testing::Test
{
protected:
    TiffMetadata()
    {
        test::save(m_file, test::corneredPicture(64, 48));
        const std::string content = test::readFile(m_file);
        const auto bytes = std::as_bytes(std::span(content));
        m_tiff.assign(bytes.begin(), bytes.end());
    }

    void write(const std::vector<std::byte>& bytes) const
    {
        std::string content;
        std::ranges::transform(bytes, std::back_inserter(content),
                               [](std::byte b) { return std::to_integer<char>(b); });
        test::writeFile(m_file, content);
    }

    const test::TemporaryDirectory m_folder;
    const std::filesystem::path m_file = m_folder / "a.tif";
    std::vector<std::byte> m_tiff;
    const Metadata m_metadata{.exif = {text("Exif.Photo.LensModel", "A lens")},
                              .tiff = {text("Exif.Image.Make", "Maker"), text("Exif.Image.Software", "Old")},
                              .iptc = {{"Iptc.Application2.Keywords", 6, "harbour"}},
                              .xmp = "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
                                     "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
                                     "<rdf:Description xmlns:dc='http://purl.org/dc/elements/1.1/' "
                                     "dc:source='words'/></rdf:RDF></x:xmpmeta>"};
};

std::vector<std::byte> withMetadata(std::vector<std::byte> tiff, const Metadata& metadata)
{
    std::vector<std::byte> file = tiff;
    EXPECT_TRUE(
        withTiffMetadata(tiff, metadata, smallPicture, [&](std::span<const std::byte> whole) -> Status {
            file.assign(whole.begin(), whole.end());
            return Done{};
        }));
    return file;
}

TEST_F(TiffMetadata, IsAddedAndThePictureStays)
{
    write(withMetadata(m_tiff, m_metadata));
    const auto image = Exiv2::ImageFactory::open(m_file.string());
    image->readMetadata();
    EXPECT_EQ(image->exifData()["Exif.Image.Make"].toString(), "Maker");
    EXPECT_EQ(image->exifData()["Exif.Photo.LensModel"].toString(), "A lens");
    EXPECT_EQ(image->exifData()["Exif.Image.ImageWidth"].toString(), "64");
    EXPECT_EQ(image->iptcData()["Iptc.Application2.Keywords"].toString(), "harbour");
    EXPECT_EQ(image->xmpData()["Xmp.dc.source"].toString(), "words");
    EXPECT_EQ(test::load(m_file).bytes, test::corneredPicture(64, 48).bytes);
}

TEST_F(TiffMetadata, ReplacesWhatTheFileSaysOfItself)
{
    write(withMetadata(m_tiff, {.tiff = {text("Exif.Image.Software", "First")}}));
    const std::string once = test::readFile(m_file);
    const auto bytes = std::as_bytes(std::span(once));
    write(withMetadata({bytes.begin(), bytes.end()}, m_metadata));
    const auto image = Exiv2::ImageFactory::open(m_file.string());
    image->readMetadata();
    const auto isSoftware = [](const Exiv2::Exifdatum& datum) {
        return datum.key() == "Exif.Image.Software";
    };
    EXPECT_EQ(std::ranges::count_if(image->exifData(), isSoftware), 1);
    EXPECT_EQ(image->exifData()["Exif.Image.Software"].toString(), "Old");
}

TEST_F(TiffMetadata, LeavesTheFileAsItIsWhenThereIsNoneOrItCannotBeAdded)
{
    EXPECT_EQ(withMetadata(m_tiff, {}), m_tiff);
    const std::vector<std::byte> damaged(m_tiff.begin(), m_tiff.begin() + 6);
    EXPECT_EQ(withMetadata(damaged, m_metadata), damaged);
    EXPECT_EQ(withMetadata({}, m_metadata), std::vector<std::byte>{});
}

TEST_F(TiffMetadata, FailsWithWhoeverTakesTheFile)
{
    const auto status = withTiffMetadata(m_tiff, m_metadata, smallPicture,
                                         [](std::span<const std::byte>) -> Status { return Error{"full"}; });
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().description, "full");
}

} // namespace
} // namespace lumora
