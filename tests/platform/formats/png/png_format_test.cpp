// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/stored_form.h"
#include "tests/platform/formats/png/png_file.h"
#include "tests/platform/formats/written_pictures.h"
#include "tests/support/exif_builder.h"

#include <gmock/gmock.h>

#include <zlib.h>

namespace lumora {
namespace {

using namespace std::string_literals;

class Png : public test::WrittenPictures
{
protected:
    // A file with more chunks behind its header, of which `lastBytes` are cut off.
    Result<ImageSource> openedWith(const test::PngChunks& more, std::size_t lastBytes = 0)
    {
        test::save(m_folder / "a.png", test::corneredPicture(16, 12));
        const std::string png = test::pngWith(test::readBytes(m_folder / "a.png"), more);
        test::writeText(m_folder / "a.png", png.substr(0, png.size() - lastBytes));
        return ImageSource::open(m_folder / "a.png");
    }
};

TEST_F(Png, BringsItsMetadataAlong)
{
    Metadata metadata = test::someMetadata();
    metadata.pngTexts = {{"Title", "Harbour"}, {"Author", "Zo\xC3\xAB"}};
    metadata.pngDensity = {300, 150};
    const auto source =
        ImageSource::open(written(redrawn(test::corneredPicture(16, 12)), "public.png", 1, metadata));
    ASSERT_TRUE(source);
    test::expectSomeMetadata(source->metadata());
    EXPECT_THAT(source->metadata().pngTexts, testing::IsSupersetOf(metadata.pngTexts));
    EXPECT_NEAR(source->metadata().pngDensity.x, 300, 0.02);
    EXPECT_NEAR(source->metadata().pngDensity.y, 150, 0.02);
}

class ExifOfAPng : public Png
{
protected:
    std::vector<std::string> makersOf(const test::PngChunks& more, std::size_t lastBytes = 0)
    {
        const auto source = openedWith(more, lastBytes);
        EXPECT_TRUE(source && decode(source->image()));
        std::vector<std::string> makers;
        for (const MetadataField& field : source->metadata().tiff) {
            if (field.key == "Exif.Image.Make") makers.emplace_back(field.bytes.c_str());
        }
        return makers;
    }

    static std::string exifBy(const std::string& maker)
    {
        return test::ExifBuilder(true).block(maker, "a note");
    }
};

TEST_F(ExifOfAPng, IsReadBehindAPrefixAndWithoutAnEndOfTheFile)
{
    constexpr std::size_t endChunk = 12;
    EXPECT_THAT(makersOf({{"eXIf", exifBy("Acme")}}), testing::ElementsAre("Acme"));
    EXPECT_THAT(makersOf({{"eXIf", "Exif\0\0"s + exifBy("Acme")}}), testing::ElementsAre("Acme"));
    EXPECT_THAT(makersOf({{"eXIf", exifBy("Acme")}}, endChunk), testing::ElementsAre("Acme"));
}

// As texts of the file have it where it was written before there was a chunk for it.
TEST_F(ExifOfAPng, IsCompletedByWhatOthersKnowBesides)
{
    const test::ExifBuilder exif(true);
    const auto blockOf = [&](unsigned tag) {
        return "MM"s + exif.number(42, 2) + exif.number(8, 4) + exif.number(1, 2) +
               exif.entry(tag, 2, 5, 26) + exif.number(0, 4) + "Acme\0"s;
    };
    constexpr unsigned model = 0x0110;
    constexpr unsigned make = 0x010F;
    EXPECT_THAT(makersOf({{"eXIf", blockOf(model)}, {"eXIf", blockOf(make)}}), testing::ElementsAre("Acme"));
}

TEST_F(ExifOfAPng, IsTheFirstThatCanBeOne)
{
    EXPECT_THAT(makersOf({{"eXIf", exifBy("First")}, {"eXIf", exifBy("Second")}}),
                testing::ElementsAre("First"));
    EXPECT_THAT(makersOf({{"eXIf", ""}, {"eXIf", "no block"}, {"eXIf", exifBy("Third")}}),
                testing::ElementsAre("Third"));
}

TEST_F(Png, TellsInHowManyBitsItsGrayWasStored)
{
    test::Pixels stripes{32, 4, 1, {}};
    for (int i = 0; i < 32 * 4; ++i)
        stripes.bytes.push_back(i % 2 == 0 ? 255 : 0);
    for (const int bits : {1, 2, 4, 8}) {
        test::save(m_folder / "a.png", stripes, {.bits = bits});
        const auto source = ImageSource::open(m_folder / "a.png");
        ASSERT_TRUE(source);
        EXPECT_EQ(storedForm(source->image().pixels()).bits, bits);
        EXPECT_EQ(source->metadata().colorModel, "Gray");
    }
}

TEST_F(Png, TellsOfHowManyFramesItIs)
{
    const auto framesIn = [&](const std::string& count) {
        const auto source = count.empty() ? openedWith({}) : openedWith({{"acTL", count + "\0\0\0\0"s}});
        EXPECT_TRUE(source && source->facts().series == SourceFacts::Series::frames);
        return source->facts().pictures;
    };
    EXPECT_EQ(framesIn(""), 1);
    EXPECT_EQ(framesIn("\0\0\0\x0C"s), 12);
    EXPECT_EQ(framesIn("\0\0\1\2"s), 258);
    EXPECT_EQ(framesIn("\xFF\xFF\xFF\xFF"s), 1); // no file holds so many
}

TEST_F(Png, KeepsAPacketThatWasStoredAsDigits)
{
    const auto source = openedWith({{"tEXt", "Raw profile type xmp\0\nxmp\n       4\n3c78\n2F3e\n"s}});
    ASSERT_TRUE(source);
    EXPECT_EQ(source->metadata().xmp, "<x/>");
    EXPECT_FALSE(source->metadata().lacksXmp);
}

TEST_F(Png, KeepsACompressedPacketOrTellsThatItLacksIt)
{
    const auto metadataOf = [&](const std::string& packet) {
        uLongf size = compressBound(packet.size());
        std::string stream(size, '\0');
        compress(reinterpret_cast<Bytef*>(stream.data()), &size,
                 reinterpret_cast<const Bytef*>(packet.data()), packet.size());
        return openedWith({{"iTXt", "XML:com.adobe.xmp\0\1\0\0\0"s + stream.substr(0, size)}})->metadata();
    };
    EXPECT_EQ(metadataOf("<x/>").xmp, "<x/>");
    EXPECT_FALSE(metadataOf("<x/>").lacksXmp);
    EXPECT_TRUE(metadataOf(std::string(std::size_t{5} << 20U, ' ')).lacksXmp);
    EXPECT_TRUE(openedWith({{"zTXt", "Raw profile type xmp\0\0no stream"s}})->metadata().lacksXmp);
    EXPECT_FALSE(openedWith({{"zTXt", "Title\0\0no stream"s}})->metadata().lacksXmp);
}

TEST_F(Png, WithDamagedDataGivesNoPicture)
{
    test::save(m_folder / "a.png", test::corneredPicture(64, 48));
    std::string png = test::readBytes(m_folder / "a.png");
    png[png.size() - 40] = static_cast<char>(png[png.size() - 40] ^ 0x55);
    test::writeText(m_folder / "a.png", png);
    const auto source = ImageSource::open(m_folder / "a.png");
    ASSERT_TRUE(source);
    EXPECT_FALSE(decode(source->image()));
}

TEST_F(Png, WithAnUnsoundHeadIsRefused)
{
    test::writeText(m_folder / "a.png", std::string(test::pngSignature));
    const auto source = ImageSource::open(m_folder / "a.png");
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().description, "damaged PNG");
}

} // namespace
} // namespace lumora
