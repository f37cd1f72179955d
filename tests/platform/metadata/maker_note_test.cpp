// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "maker_note.h"

#include "note_in_place.h"

#include "tests/support/exif_builder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::ExifBuilder;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

Exiv2::ExifData dataOf(const std::string& block)
{
    ensureExiv2Ready();
    Exiv2::ExifData data;
    Exiv2::ExifParser::decode(data, bytesOf(block), static_cast<std::uint32_t>(block.size()));
    return data;
}

std::string valueIn(const std::string& block, const char* key)
{
    const auto data = dataOf(block);
    const auto found = data.findKey(Exiv2::ExifKey(key));
    return found == data.end() ? "" : found->toString();
}

class MakerNote : public testing::TestWithParam<bool>
{
protected:
    std::string encoded(const std::string& make, const std::string& note)
    {
        return encodedWithMakerNote(dataOf(m_exif.block(make, note)));
    }

    ExifBuilder m_exif{GetParam()};
};

TEST_P(MakerNote, IsWrittenAnewFromItsFieldsInItsByteOrder)
{
    const std::string note = m_exif.directory(
        {{0x0006, "Image type of a camera"}, {0x0007, "Firmware 1.2.3"}}, ExifBuilder::noteOffset);
    const std::string block = encoded("Canon", note);
    EXPECT_THAT(block, StartsWith(GetParam() ? "MM" : "II"));
    EXPECT_EQ(valueIn(block, "Exif.Image.Make"), "Canon");
    EXPECT_EQ(valueIn(block, "Exif.Canon.ImageType"), "Image type of a camera");
    EXPECT_EQ(valueIn(block, "Exif.Canon.FirmwareVersion"), "Firmware 1.2.3");
    // Where the note lies now is not where it lay, so its bytes cannot be a copy.
    EXPECT_THAT(block, Not(HasSubstr(note)));
}

// The library reads numbers of two bytes out of this field and loses the odd byte behind them.
TEST_P(MakerNote, ThatCannotBeWrittenAnewStaysWhereItLay)
{
    const std::string note = m_exif.number(1, 2) + m_exif.entry(0x0001, 7, 7, 190) + m_exif.number(0, 4) +
                             m_exif.number(12, 2) + m_exif.number(3, 2) + m_exif.number(4, 2) + "\5";
    const std::string block = encoded("Canon", note);
    EXPECT_THAT(block, StartsWith(GetParam() ? "MM" : "II"));
    EXPECT_EQ(valueIn(block, "Exif.Image.Make"), "Canon");
    EXPECT_EQ(valueIn(block, "Exif.CanonCs.Quality"),
              valueIn(m_exif.block("Canon", note), "Exif.CanonCs.Quality"));
    EXPECT_EQ(block.substr(ExifBuilder::noteOffset, note.size()), note);

    const auto data = dataOf(m_exif.block("Canon", note));
    EXPECT_EQ(valueIn(encodedWithMakerNote(data, {.mayStayInPlace = false}), "Exif.Photo.MakerNote"), "");
    EXPECT_EQ(valueIn(encodedWithMakerNote(data, {.longestBlock = 150}), "Exif.Photo.MakerNote"), "");
}

TEST_P(MakerNote, OfAnUnknownKindIsLeftOut)
{
    const std::string block = encoded("Acme", m_exif.directory({{0x0001, "words of a stranger"}}, 172));
    EXPECT_EQ(valueIn(block, "Exif.Image.Make"), "Acme");
    EXPECT_EQ(valueIn(block, "Exif.Photo.MakerNote"), "");
    EXPECT_THAT(block, Not(HasSubstr("words of a stranger")));
}

TEST_P(MakerNote, ThatNeedsNothingAroundItIsCopied)
{
    for (const std::string& start : {std::string("Apple iOS\0\0\1MM", 14), std::string("HDRP\2 and more")}) {
        const std::string note = start + std::string("\0\1 whatever it says", 19);
        EXPECT_THAT(encoded("Maker", note), HasSubstr(note)) << start;
    }
}

INSTANTIATE_TEST_SUITE_P(, MakerNote, testing::Bool(),
                         [](const auto& test) { return test.param ? "BigEndian" : "LittleEndian"; });

// Everything else makes room for the note, on either side of it.
TEST(NoteInPlace, LeavesEveryOtherFieldReadable)
{
    ensureExiv2Ready();
    Exiv2::ExifData data;
    const std::string words(300, 'w');
    data["Exif.Image.Make"] = "Maker";
    data["Exif.Image.Artist"] = words;
    data["Exif.Photo.ExposureTime"] = Exiv2::Rational(1, 125);
    data["Exif.Photo.UserComment"] = words;
    data["Exif.Iop.InteroperabilityIndex"] = "R98";
    data["Exif.GPSInfo.GPSLatitudeRef"] = "N";
    data["Exif.GPSInfo.GPSDateStamp"] = "2020:01:02";
    Exiv2::Blob blob;
    Exiv2::ExifParser::encode(blob, Exiv2::bigEndian, data);
    const std::string note = "a note of nobody";
    for (std::size_t place = 8; place < 1200; place += 31) {
        const std::string block = withNoteInPlace({blob.begin(), blob.end()}, note, place);
        EXPECT_EQ(block.substr(place, note.size()), note) << place;
        Exiv2::ExifData found = dataOf(block);
        EXPECT_EQ(fieldOf(*found.findKey(Exiv2::ExifKey("Exif.Photo.MakerNote"))).bytes, note) << place;
        for (const auto& datum : data)
            EXPECT_EQ(found[datum.key()].toString(), datum.toString()) << place << datum.key();
    }
    EXPECT_EQ(withNoteInPlace({blob.begin(), blob.end()}, note, 4), "");
    EXPECT_EQ(withNoteInPlace({blob.begin(), blob.end()}, note, 5'000'000), "");
    EXPECT_EQ(withNoteInPlace("", note, 100), "");
}

TEST(MakerNoteFields, ThatHoldAPreviewAreLeftBehind)
{
    ensureExiv2Ready();
    const auto isLeft = [](const char* key) { return isLeftBehind(Exiv2::Exifdatum(Exiv2::ExifKey(key))); };
    EXPECT_TRUE(isLeft("Exif.NikonPreview.JPEGInterchangeFormat"));
    EXPECT_TRUE(isLeft("Exif.Olympus.ThumbnailImage"));
    EXPECT_TRUE(isLeft("Exif.OlympusCs.PreviewImageStart"));
    EXPECT_FALSE(isLeft("Exif.Nikon3.Quality"));
    EXPECT_FALSE(isLeft("Exif.Image.PreviewColorSpace")); // not a maker's field
    EXPECT_FALSE(isLeft("Exif.Photo.ExposureTime"));
}

} // namespace
} // namespace lumora
