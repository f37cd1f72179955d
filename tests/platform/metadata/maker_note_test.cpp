// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "maker_note.h"

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
