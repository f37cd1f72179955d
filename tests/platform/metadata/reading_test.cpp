// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/reading.h"

#include "exiv2_library.h"
#include "system/file_descriptor.h"
#include "tests/support/exif_builder.h"
#include "tests/support/files.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

namespace lumora {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string valueOf(const MetadataFields& fields, const std::string& key)
{
    const auto found = std::ranges::find(fields, key, &MetadataField::key);
    return found == fields.end() ? "none" : found->bytes;
}

struct Container
{
    const char* name; // of the file
    bool holdsIptc;
};

void PrintTo(const Container& container, std::ostream* out)
{
    *out << container.name;
}

// A file of each container with metadata of all kinds, written by the metadata library itself.
class ReadContainer : public testing::TestWithParam<Container>
{
protected:
    ReadContainer()
    {
        test::save(m_file, test::corneredPicture(16, 12));
        ensureExiv2Ready();
        const auto image = Exiv2::ImageFactory::open(m_file.string());
        image->readMetadata();
        Exiv2::ExifData& exif = image->exifData();
        exif["Exif.Image.Make"] = "Maker";
        exif["Exif.Photo.ExposureTime"] = Exiv2::Rational(1, 125);
        exif["Exif.GPSInfo.GPSLatitudeRef"] = "N";
        image->iptcData()["Iptc.Application2.Keywords"] = "harbour";
        image->xmpData()["Xmp.dc.source"] = "the source's words";
        image->writeMetadata();
    }

    static Metadata read(const std::filesystem::path& path)
    {
        const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
        Metadata metadata;
        readContainer(file.get(), metadata);
        return metadata;
    }
    static std::size_t fieldCount(const Metadata& metadata)
    {
        return metadata.exif.size() + metadata.gps.size() + metadata.tiff.size() + metadata.iptc.size();
    }

    const test::TemporaryDirectory m_folder;
    const std::filesystem::path m_file = m_folder / GetParam().name;
};

TEST_P(ReadContainer, FindsEveryKind)
{
    const Metadata metadata = read(m_file);
    EXPECT_EQ(valueOf(metadata.tiff, "Exif.Image.Make"), std::string("Maker\0", 6));
    EXPECT_EQ(valueOf(metadata.exif, "Exif.Photo.ExposureTime"), std::string("\1\0\0\0\x7D\0\0\0", 8));
    EXPECT_EQ(valueOf(metadata.gps, "Exif.GPSInfo.GPSLatitudeRef"), std::string("N\0", 2));
    EXPECT_EQ(valueOf(metadata.iptc, "Iptc.Application2.Keywords"),
              GetParam().holdsIptc ? "harbour" : "none");
    EXPECT_THAT(metadata.xmp, HasSubstr("the source's words"));
}

// The library's own way to a file, which is by its name.
TEST_P(ReadContainer, FindsWhatTheLibraryFindsByTheName)
{
    const auto image = Exiv2::ImageFactory::open(m_file.string());
    image->readMetadata();
    MetadataFields expected;
    for (const auto& datum : image->exifData()) {
        if (datum.key() != "Exif.Image.XMLPacket") expected.push_back(fieldOf(datum));
    }
    for (const auto& datum : image->iptcData())
        expected.push_back(fieldOf(datum));
    const Metadata metadata = read(m_file);
    MetadataFields found;
    for (const MetadataFields* fields : {&metadata.tiff, &metadata.exif, &metadata.gps, &metadata.iptc})
        found.insert(found.end(), fields->begin(), fields->end());
    EXPECT_THAT(found, testing::UnorderedElementsAreArray(expected));
    const std::string& packet = std::as_const(*image).xmpPacket();
    if (!packet.empty()) {
        EXPECT_EQ(metadata.xmp, packet);
    } else { // of a TIFF it hands on a wording of its own
        EXPECT_THAT(test::readFile(m_file), HasSubstr(metadata.xmp));
        EXPECT_THAT(metadata.xmp, testing::StartsWith("<?xpacket begin"));
        EXPECT_THAT(metadata.xmp, testing::EndsWith("<?xpacket end=\"w\"?>"));
    }
}

TEST_P(ReadContainer, LeavesTheFilesPositionAlone)
{
    const FileDescriptor file(::open(m_file.c_str(), O_RDONLY | O_CLOEXEC));
    lseek(file.get(), 5, SEEK_SET);
    Metadata metadata;
    readContainer(file.get(), metadata);
    ASSERT_FALSE(metadata.tiff.empty());
    EXPECT_EQ(lseek(file.get(), 0, SEEK_CUR), 5);
}

TEST_P(ReadContainer, FindsLessInAFileThatIsCutOff)
{
    const std::string whole = test::readFile(m_file);
    const std::size_t most = fieldCount(read(m_file));
    for (std::size_t size = 0; size < whole.size(); size += 1 + whole.size() / 150) {
        test::writeFile(m_file, whole.substr(0, size));
        EXPECT_LE(fieldCount(read(m_file)), most) << size;
    }
    test::writeFile(m_file, whole.substr(0, 10));
    EXPECT_EQ(read(m_file), Metadata{});
}

TEST_P(ReadContainer, EndsForAFileWithDamageAnywhere)
{
    const std::string whole = test::readFile(m_file);
    for (std::size_t at = 0; at < whole.size(); at += 1 + whole.size() / 300) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 0xFF);
        test::writeFile(m_file, damaged);
        EXPECT_LT(fieldCount(read(m_file)), 1000U) << at;
    }
}

INSTANTIATE_TEST_SUITE_P(, ReadContainer,
                         testing::Values(Container{"a.jpg", true}, Container{"a.png", true},
                                         Container{"a.tif", true}, Container{"a.webp", false}),
                         [](const auto& test) { return std::string(test.param.name).substr(2); });

TEST(ReadContainerOfAnotherKind, FindsNothing)
{
    const test::TemporaryDirectory folder;
    test::writeFile(folder / "a", "Words, and no picture.");
    const FileDescriptor words(::open((folder / "a").c_str(), O_RDONLY | O_CLOEXEC));
    Metadata metadata;
    readContainer(words.get(), metadata);
    readContainer(-1, metadata);
    EXPECT_EQ(metadata, Metadata{});
}

std::string encoded(const Exiv2::ExifData& data)
{
    Exiv2::Blob blob;
    Exiv2::ExifParser::encode(blob, Exiv2::littleEndian, data);
    return {blob.begin(), blob.end()};
}

class ReadBlocks : public testing::Test
{
protected:
    ReadBlocks()
    {
        ensureExiv2Ready();
        m_data["Exif.Image.Make"] = "Maker";
    }

    static Metadata read(std::string_view exif, std::string_view xmp = {})
    {
        Metadata metadata;
        readBlocks(exif, xmp, metadata);
        return metadata;
    }

    Exiv2::ExifData m_data;
};

TEST_F(ReadBlocks, TakesABlockWithItsPrefixOrWithout)
{
    const Metadata bare = read(encoded(m_data));
    EXPECT_EQ(valueOf(bare.tiff, "Exif.Image.Make"), std::string("Maker\0", 6));
    EXPECT_EQ(read(std::string("Exif\0\0", 6) + encoded(m_data)), bare);
}

TEST_F(ReadBlocks, KeepsThePacketAsItIsEvenBesideDamage)
{
    EXPECT_EQ(read("", "<x:xmpmeta"), Metadata{.xmp = "<x:xmpmeta"});
    EXPECT_EQ(read("no EXIF at all", "<x:xmpmeta"), Metadata{.xmp = "<x:xmpmeta"});
    EXPECT_EQ(read("", ""), Metadata{});
}

TEST_F(ReadBlocks, LeavesPreviewsAndFurtherPicturesBehind)
{
    const std::string preview = "\xFF\xD8 a small picture \xFF\xD9";
    Exiv2::ExifThumb(m_data).setJpegThumbnail(bytesOf(preview), static_cast<long>(preview.size()));
    const std::string block = encoded(m_data);
    ASSERT_THAT(block, HasSubstr("a small picture"));
    const Metadata metadata = read(block);
    EXPECT_EQ(valueOf(metadata.tiff, "Exif.Image.Make"), std::string("Maker\0", 6));
    for (const MetadataFields* fields : {&metadata.tiff, &metadata.exif, &metadata.gps}) {
        for (const MetadataField& field : *fields) {
            EXPECT_THAT(field.key, testing::Not(HasSubstr("Thumbnail")));
            EXPECT_THAT(field.bytes, testing::Not(HasSubstr("a small picture")));
        }
    }
}

TEST_F(ReadBlocks, LeavesTheDirectoriesOfFurtherPicturesBehind)
{
    const test::ExifBuilder exif(false);
    const auto directory = [&](const std::string& entries, std::size_t count, std::size_t next) {
        return exif.number(count, 2) + entries + exif.number(next, 4);
    };
    const std::string width = exif.entry(0x0100, 4, 1, 99);
    // The picture's own, one below it, and one behind it.
    const std::string block =
        "II" + exif.number(42, 2) + exif.number(8, 4) +
        directory(exif.entry(0x010F, 2, 4, 0x003A4241) + exif.entry(0x014A, 4, 1, 38), 2, 56) +
        directory(width, 1, 0) + directory(width, 1, 0);
    Exiv2::ExifData whole;
    Exiv2::ExifParser::decode(whole, bytesOf(block), static_cast<std::uint32_t>(block.size()));
    ASSERT_NE(whole.findKey(Exiv2::ExifKey("Exif.SubImage1.ImageWidth")), whole.end());
    ASSERT_NE(whole.findKey(Exiv2::ExifKey("Exif.Thumbnail.ImageWidth")), whole.end());
    const Metadata metadata = read(block);
    EXPECT_EQ(valueOf(metadata.tiff, "Exif.Image.Make"), std::string("AB:\0", 4));
    EXPECT_THAT(metadata.exif, IsEmpty());
    for (const MetadataField& field : metadata.tiff)
        EXPECT_THAT(field.key, testing::StartsWith("Exif.Image."));
}

// Several fields of a camera maker share a name, and several kinds of value have no number in files.
TEST_F(ReadBlocks, NamesFieldsSoThatTheyCanBeWrittenAgain)
{
    m_data["Exif.Photo.UserComment"] = "charset=Unicode a remark";
    m_data["Exif.Photo.ExposureTime"] = Exiv2::Rational(1, 125);
    Exiv2::ExifData again;
    const Metadata metadata = read(encoded(m_data));
    for (const MetadataFields* fields : {&metadata.tiff, &metadata.exif}) {
        for (const MetadataField& field : *fields)
            addField(again, field);
    }
    EXPECT_EQ(again["Exif.Photo.UserComment"].toString(), "charset=Unicode a remark");
    EXPECT_EQ(again["Exif.Photo.ExposureTime"].toString(), "1/125");
}

TEST_F(ReadBlocks, FindsLessInABlockThatIsCutOff)
{
    m_data["Exif.Photo.ExposureTime"] = Exiv2::Rational(1, 125);
    const std::string block = encoded(m_data);
    for (std::size_t size = 0; size < block.size(); ++size) {
        const Metadata metadata = read(std::string_view(block).substr(0, size));
        EXPECT_LE(metadata.exif.size(), 1U) << size;
    }
    EXPECT_THAT(read(std::string_view(block).substr(0, 12)).tiff, IsEmpty());
}

} // namespace
} // namespace lumora
