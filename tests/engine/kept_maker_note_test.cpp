// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Camera makers' notes, as an independent reader finds them after a picture was written anew.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/platform/formats/png/png_file.h"
#include "tests/support/exif_builder.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::ExifBuilder;
using test::settings;
using test::tagOf;
using testing::HasSubstr;
using testing::Not;

class KeptMakerNote : public testing::TestWithParam<OutputFormat>
{
protected:
    std::filesystem::path optimized(const std::string& exif)
    {
        test::save(m_folder / "a.jpg", test::corneredPicture(64, 48));
        test::writeText(m_folder / "a.jpg", test::jpegWithExif(test::readBytes(m_folder / "a.jpg"), exif));
        return optimizedFile("a.jpg");
    }

    std::filesystem::path optimizedPng(const std::string& exif)
    {
        test::save(m_folder / "a.png", test::corneredPicture(64, 48));
        test::writeText(m_folder / "a.png",
                        test::pngWith(test::readBytes(m_folder / "a.png"), {{"eXIf", exif}}));
        return optimizedFile("a.png");
    }

    std::filesystem::path optimizedFile(const std::string& name)
    {
        return *ImageOptimizer::optimize(
                    m_folder / name,
                    settings({.outputFormat = GetParam(), .removeMetadata = false, .filenameSuffix = "-out"}),
                    test::localServices())
                    .outputURL;
    }

    static void expectNoteAtItsPlace(const std::filesystem::path& file, const ExifBuilder& exif,
                                     const std::string& note)
    {
        EXPECT_EQ(tagOf(file, "Make"), "Acme Cameras\n");
        EXPECT_EQ(tagOf(file, "Warning"), "");
        const std::string bytes = test::readBytes(file);
        const std::size_t block = bytes.find(exif.head());
        ASSERT_NE(block, std::string::npos);
        EXPECT_EQ(bytes.substr(block + ExifBuilder::noteOffset, note.size()), note);
    }

    test::TemporaryDirectory m_folder;
};

TEST_P(KeptMakerNote, WhoseOffsetsCountFromTheWholeBlockStaysReadableInEitherByteOrder)
{
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        const std::string note = exif.directory(
            {{0x0006, "Image type of a camera"}, {0x0007, "Firmware 1.2.3"}}, ExifBuilder::noteOffset);
        const auto file = optimized(exif.block("Canon", note));
        EXPECT_EQ(tagOf(file, "Canon:CanonImageType"), "Image type of a camera\n") << isBigEndian;
        EXPECT_EQ(tagOf(file, "Canon:CanonFirmwareVersion"), "Firmware 1.2.3\n") << isBigEndian;
        EXPECT_EQ(tagOf(file, "Warning"), "") << isBigEndian;
    }
}

TEST_P(KeptMakerNote, WithItsOwnHeaderStaysReadableAndTellsFieldsOfOneNameApart)
{
    const ExifBuilder exif(true);
    const std::string note = std::string("Nikon\0\2\x10\0\0", 10) + "MM" + exif.number(42, 2) +
                             exif.number(8, 4) + exif.directory({{0x0094, "sat 94"}, {0x00AA, "sat aa"}}, 8);
    const auto file = optimized(exif.block("NIKON CORPORATION", note));
    EXPECT_EQ(tagOf(file, "Nikon:Saturation"), "sat aa\n");
}

TEST_P(KeptMakerNote, ThatNeedsNothingAroundItIsCopied)
{
    const ExifBuilder exif(true);
    const std::string note = std::string("Apple iOS\0\0\1MM", 14) + exif.number(1, 2) +
                             exif.entry(0x000A, 9, 1, 3) + exif.number(0, 4);
    const auto file = optimized(exif.block("Apple", note));
    EXPECT_EQ(tagOf(file, "Apple:HDRImageType"), "3\n");
    EXPECT_EQ(tagOf(file, "Make"), "Apple\n");
}

// The metadata library cannot write this field anew, so the whole note must stay where it lay.
TEST_P(KeptMakerNote, WithAnOddFieldStaysReadable)
{
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        const std::string note = exif.number(2, 2) + exif.entry(0x0001, 7, 7, 202) +
                                 exif.entry(0x0007, 2, 15, 210) + exif.number(0, 4) + exif.number(12, 2) +
                                 exif.number(2, 2) + exif.number(4, 2) + std::string("\5\0", 2) +
                                 std::string("Firmware 1.2.3\0", 15);
        const std::string block = exif.block("Canon", note);
        const auto file = optimized(block);
        const std::string all = "exiftool -a -s -G1 -MakerNotes:all '";
        const std::string before = test::outputOf(all + (m_folder / "a.jpg").string() + "'");
        EXPECT_THAT(before, HasSubstr("Firmware 1.2.3")) << isBigEndian;
        EXPECT_EQ(test::outputOf(all + file.string() + "'"), before) << isBigEndian;
        EXPECT_EQ(tagOf(file, "Make"), "Canon\n") << isBigEndian;
    }
}

// Whatever its offsets count from.
TEST_P(KeptMakerNote, OfAnUnknownKindStaysByteByByteWhereItLay)
{
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        const std::string note = exif.directory({{0x0001, "words of a stranger"}}, ExifBuilder::noteOffset);
        const auto file = optimized(exif.block("Acme Cameras", note));
        expectNoteAtItsPlace(file, exif, note);
        EXPECT_EQ(test::outputOf("exiftool -b -MakerNoteUnknown '" + file.string() + "'"),
                  test::outputOf("exiftool -b -MakerNoteUnknown '" + (m_folder / "a.jpg").string() + "'"));
    }
}

TEST_P(KeptMakerNote, OfAnUnknownKindInAPngStaysByteByByteWhereItLay)
{
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        const std::string note = exif.directory({{0x0001, "words of a stranger"}}, ExifBuilder::noteOffset);
        expectNoteAtItsPlace(optimizedPng(exif.block("Acme Cameras", note)), exif, note);
    }
}

// What leads to a directory elsewhere is a number like any other there.
TEST_P(KeptMakerNote, OfAnUnknownKindStaysBesideAStrayPointer)
{
    const std::string note = "words of a stranger";
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        for (const std::size_t stray : {10U, 26U, 78U, 150U}) {
            std::string block = exif.head() + exif.number(8, 4);
            block += exif.number(1, 2) + exif.entry(0x8769, 4, 1, 26) + exif.number(0, 4);
            block += exif.number(2, 2) + exif.entry(0x8825, 4, 1, stray) +
                     exif.entry(0x927C, 7, note.size(), ExifBuilder::noteOffset) + exif.number(0, 4);
            block.resize(ExifBuilder::noteOffset, '\0');
            const auto file = optimized(block + note);
            EXPECT_LT(std::filesystem::file_size(file), 20'000u) << stray;
            EXPECT_THAT(test::readBytes(file), HasSubstr(note)) << stray;
        }
    }
}

TEST_P(KeptMakerNote, OfAnUnknownKindWithAPreviewIsLeftOut)
{
    const auto file =
        optimized(ExifBuilder(false).block("Acme Cameras", "words\xFF\xD8\xFF\xE0 of a stranger"));
    EXPECT_EQ(tagOf(file, "Make"), "Acme Cameras\n");
    EXPECT_THAT(test::readBytes(file), Not(HasSubstr("of a stranger")));
}

// Numbers longer than a byte are turned round between the orders of bytes.
TEST_P(KeptMakerNote, OfAnUnknownKindThatIsNotOfBytesIsLeftOut)
{
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        std::string block = exif.block("Acme Cameras", "words of a stranger!");
        const std::string bytes = exif.entry(0x927C, 7, 20, ExifBuilder::noteOffset);
        block.replace(block.find(bytes), bytes.size(), exif.entry(0x927C, 3, 10, ExifBuilder::noteOffset));
        const auto file = optimized(block);
        EXPECT_EQ(tagOf(file, "Make"), "Acme Cameras\n");
        EXPECT_THAT(test::readBytes(file), Not(HasSubstr("words of"))) << isBigEndian;
        EXPECT_THAT(test::readBytes(file), Not(HasSubstr("owdr sfo"))) << isBigEndian;
    }
}

// Its numbers may be anything.
TEST_P(KeptMakerNote, OfAnUnknownKindThatIsSaidToLieElsewhereIsLeftOut)
{
    const ExifBuilder exif(false);
    std::string block = exif.block("Acme Cameras", "words of a stranger");
    block.replace(block.find(exif.number(ExifBuilder::noteOffset, 4)), 4, exif.number(0xFFFFFF00, 4));
    const auto file = optimized(block);
    EXPECT_EQ(tagOf(file, "Make"), "Acme Cameras\n");
    EXPECT_THAT(test::readBytes(file), Not(HasSubstr("words of a stranger")));
}

INSTANTIATE_TEST_SUITE_P(Formats, KeptMakerNote,
                         testing::Values(OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic),
                         [](const auto& instance) { return std::string(rawValue(instance.param)); });

// A file of which the picture is a part has other things at that place.
TEST(KeptMakerNoteOfATiff, OfAnUnknownKindIsLeftOutWholly)
{
    const test::TemporaryDirectory folder;
    const ExifBuilder exif(false);
    test::save(folder / "a.jpg", test::corneredPicture(64, 48));
    test::writeText(folder / "a.jpg", test::jpegWithExif(test::readBytes(folder / "a.jpg"),
                                                         exif.block("Acme Cameras", "words of a stranger")));
    test::save(folder / "b.tif", test::corneredPicture(64, 48));
    test::outputOf("exiftool -q -overwrite_original -tagsfromfile '" + (folder / "a.jpg").string() +
                   "' -makernotes -make '" + (folder / "b.tif").string() + "'");
    EXPECT_THAT(test::readBytes(folder / "b.tif"), HasSubstr("words of a stranger"));
    const auto result = ImageOptimizer::optimize(
        folder / "b.tif", settings({.outputFormat = OutputFormat::original, .removeMetadata = false}),
        test::localServices());
    EXPECT_EQ(tagOf(*result.outputURL, "Make"), "Acme Cameras\n");
    EXPECT_THAT(test::readBytes(*result.outputURL), Not(HasSubstr("words of a stranger")));
    EXPECT_THAT(result.message, HasSubstr("maker note"));
}

TEST(KeptMakerNoteOfATiff, StaysReadable)
{
    const test::TemporaryDirectory folder;
    const ExifBuilder exif(false);
    test::save(folder / "a.jpg", test::corneredPicture(64, 48));
    test::writeText(folder / "a.jpg",
                    test::jpegWithExif(test::readBytes(folder / "a.jpg"),
                                       exif.block("Canon", exif.directory({{0x0006, "Image type"}}, 172))));
    test::save(folder / "b.tif", test::corneredPicture(64, 48));
    test::outputOf("exiftool -q -overwrite_original -tagsfromfile '" + (folder / "a.jpg").string() +
                   "' -makernotes -make '" + (folder / "b.tif").string() + "'");
    const auto result = ImageOptimizer::optimize(
        folder / "b.tif", settings({.outputFormat = OutputFormat::original, .removeMetadata = false}),
        test::localServices());
    EXPECT_EQ(tagOf(*result.outputURL, "Canon:CanonImageType"), "Image type\n");
    EXPECT_EQ(test::load(*result.outputURL).bytes, test::corneredPicture(64, 48).bytes);
}

} // namespace
} // namespace lumora
