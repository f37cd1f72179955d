// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where no smaller output can be made for a chosen folder, the original goes there as it is.
#include "system/file_services.h"
#include "tests/engine/optimizer_test.h"
#include "tests/platform/formats/png/png_file.h"
#include "tests/support/jpeg_segment.h"
#include "tests/support/program_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::jpegSegment;
using test::outputOf;
using test::readBytes;
using test::SettingsDraft;
using test::tagOf;
using test::writeTag;
using test::writeText;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class LosslessCopy : public test::OptimizerTest
{
protected:
    LosslessCopy() { fs::create_directories(m_out); }

    // At full quality, by which no JPEG of less gets smaller.
    SettingsDraft draft() const
    {
        return {.outputFormat = OutputFormat::original,
                .quality = 100,
                .destinationMode = DestinationMode::selectedFolder,
                .destinationFolderURL = m_out,
                .onlySmaller = true};
    }
    SettingsDraft keeping() const
    {
        SettingsDraft draft = this->draft();
        draft.removeMetadata = draft.removeColorManagement = draft.optimizeColorForSharing = false;
        return draft;
    }

    // So small that no output of full quality is smaller.
    fs::path smallJpeg(const std::string& name, const test::SaveOptions& options = {},
                       const test::Pixels& pixels = test::corneredPicture(64, 48))
    {
        constexpr double low = 5;
        test::save(m_in / "larger.jpg", pixels, options);
        const auto output = *optimize(m_in / "larger.jpg", {.outputFormat = OutputFormat::jpeg,
                                                            .quality = low,
                                                            .optimizeColorForSharing = false,
                                                            .removeColorManagement = false})
                                 .outputURL;
        fs::remove(m_in / "larger.jpg");
        fs::rename(output, m_in / name);
        return m_in / name;
    }
    // As small as it gets.
    fs::path smallPng(const std::string& name)
    {
        const auto larger = photo("larger.png");
        fs::rename(*optimize(larger, {.outputFormat = OutputFormat::png}).outputURL, m_in / name);
        fs::remove(larger);
        return m_in / name;
    }
    fs::path jpegWithMetadata(const std::string& name)
    {
        auto file = smallJpeg(name);
        outputOf("exiftool -q -overwrite_original -api Compact=NoPadding -Make=Maker -GPSLatitude=12.5 "
                 "-GPSLatitudeRef=N "
                 "-XMP-dc:Title=T -IPTC:Keywords=harbour -Comment=remark -JFIF:XResolution=300 "
                 "-JFIF:YResolution=300 -JFIF:ResolutionUnit=inches '" +
                 file.string() + "'");
        return file;
    }

    fs::path copied(const fs::path& file, const SettingsDraft& draft)
    {
        const auto result = optimize(file, draft);
        EXPECT_EQ(result.message, "Copied: the output would not be smaller.");
        EXPECT_TRUE(result.isSuccess);
        EXPECT_EQ(result.originalBytes, static_cast<std::int64_t>(fs::file_size(file)));
        EXPECT_EQ(result.outputBytes, static_cast<std::int64_t>(fs::file_size(*result.outputURL)));
        EXPECT_EQ(pixelsOf(*result.outputURL), pixelsOf(file));
        return *result.outputURL;
    }
    void expectKept(const fs::path& file, const SettingsDraft& draft)
    {
        EXPECT_EQ(failureOf(file, draft), "Kept: the output would not be smaller.") << file;
        EXPECT_EQ(filesIn(m_out), 0u);
    }

    // A digest of them, by an independent reader.
    static std::string pixelsOf(const fs::path& file)
    {
        auto digest = outputOf("identify -format '%wx%h %#' '" + file.string() + "'");
        EXPECT_THAT(digest, Not(IsEmpty()));
        return digest;
    }
    static std::string everythingIn(const fs::path& file)
    {
        return outputOf("exiftool -a -G1 -s -ee '" + file.string() + "'");
    }
    static void insert(const fs::path& jpeg, const std::string& segments, const std::string& behind = {})
    {
        const std::string bytes = readBytes(jpeg);
        writeText(jpeg, bytes.substr(0, 2) + segments + bytes.substr(2) + behind);
    }
    static void rewritePng(const fs::path& png, const std::function<void(test::PngChunks&)>& change)
    {
        auto chunks = test::chunksIn(readBytes(png).substr(test::pngSignature.size()));
        change(chunks);
        writeText(png, test::pngOf(chunks));
    }

    fs::path m_out = m_folder / "out";
};

TEST_F(LosslessCopy, IsTheOriginalBitByBitWhereEverythingIsKept)
{
    const auto jpeg = jpegWithMetadata("a.jpg");
    insert(jpeg, "", "a film behind the picture");
    EXPECT_TRUE(readBytes(copied(jpeg, keeping())) == readBytes(jpeg));
    const auto png = smallPng("a.png");
    EXPECT_TRUE(readBytes(copied(png, keeping())) == readBytes(png));
    EXPECT_EQ(filesIn(m_trash), 0u);
}

TEST_F(LosslessCopy, OfAJpegLosesItsMetadata)
{
    const auto file = jpegWithMetadata("a.jpg");
    insert(file, jpegSegment(0xE5, "somebody's words"), "a film behind the picture");
    const auto copy = copied(file, draft());
    for (const char* tag : {"EXIF:all", "XMP:all", "IPTC:all", "Comment", "GPS:all"}) {
        EXPECT_NE(tagOf(file, tag), "") << tag;
        EXPECT_EQ(tagOf(copy, tag), "") << tag;
    }
    EXPECT_EQ(tagOf(file, "JFIF:XResolution"), "300\n");
    EXPECT_EQ(tagOf(copy, "JFIF:XResolution"), "1\n");
    EXPECT_THAT(readBytes(copy), Not(HasSubstr("somebody's words")));
    EXPECT_THAT(readBytes(copy), Not(HasSubstr("a film")));
    // What codes the picture is where it was, bit by bit.
    const auto coded = [](const std::string& bytes) { return bytes.substr(bytes.find("\xFF\xDB")); };
    EXPECT_THAT(coded(readBytes(file)), testing::StartsWith(coded(readBytes(copy))));
}

TEST_F(LosslessCopy, OfAPngLosesItsMetadata)
{
    const auto file = smallPng("a.png");
    outputOf("exiftool -q -overwrite_original -Make=Maker -GPSLatitude=12.5 -GPSLatitudeRef=N "
             "-XMP-dc:Title=T -PNG:Author=A -PNG:ModifyDate='2019:02:03 04:05:06' '" +
             file.string() + "'");
    writeText(file, readBytes(file) + "a film behind the picture");
    const auto copy = copied(file, draft());
    const std::string said = everythingIn(copy);
    EXPECT_THAT(everythingIn(file), HasSubstr("Maker"));
    for (const char* word : {"Maker", "GPS", "Title", "Author", "2019:02", "XMP"})
        EXPECT_THAT(said, Not(HasSubstr(word)));
    EXPECT_THAT(readBytes(copy), Not(HasSubstr("a film")));
}

TEST_F(LosslessCopy, IsTakenInsteadOfASmallerFileThatIsLargerThanIt)
{
    const auto file = smallPng("a.png");
    writeTag(file, "PNG:Comment", std::string(5000, 'x'));
    EXPECT_LT(fs::file_size(copied(file, draft())), 5000u);
    const auto jpeg = smallJpeg("a.jpg");
    insert(jpeg, jpegSegment(0xFE, std::string(60'000, 'x')));
    EXPECT_LT(fs::file_size(copied(jpeg, draft())), 5000u);
}

TEST_F(LosslessCopy, IsNotMadeOfWhatGetsSmaller)
{
    test::save(m_in / "a.jpg", test::corneredPicture(640, 480));
    SettingsDraft draft = this->draft();
    draft.quality = 10;
    const auto result = optimize(m_in / "a.jpg", draft);
    EXPECT_THAT(result.message, testing::StartsWith("Saved "));
    EXPECT_NE(pixelsOf(*result.outputURL), pixelsOf(m_in / "a.jpg"));
}

TEST_F(LosslessCopy, IsNotMadeBesideTheOriginal)
{
    const auto file = smallJpeg("a.jpg");
    SettingsDraft draft = this->draft();
    draft.destinationFolderURL = m_in;
    expectKept(file, draft);
    draft.destinationMode = DestinationMode::originalLocation;
    expectKept(file, draft);
    EXPECT_EQ(filesIn(m_in), 1u);
}

TEST_F(LosslessCopy, KeepsTheProfileThatIsToBeKept)
{
    const auto jpeg = smallJpeg("a.jpg", {.profile = "p3"});
    writeTag(jpeg, "Comment", "remark");
    SettingsDraft draft = keeping();
    draft.removeMetadata = true;
    const auto copy = copied(jpeg, draft);
    EXPECT_EQ(tagOf(copy, "ICC_Profile:ProfileDescription"), tagOf(jpeg, "ICC_Profile:ProfileDescription"));
    EXPECT_NE(tagOf(copy, "ICC_Profile:ProfileDescription"), "");
    EXPECT_EQ(tagOf(copy, "Comment"), "");
}

TEST_F(LosslessCopy, LosesTheProfileOfSrgbThatIsToBeRemoved)
{
    for (const char* name : {"a.jpg", "a.png"}) {
        const auto file =
            fs::path(name).extension() == ".jpg" ? smallJpeg(name, {.profile = "srgb"}) : smallPng(name);
        if (name == std::string("a.png"))
            rewritePng(file, [](auto& chunks) { chunks.insert(chunks.begin() + 1, {"sRGB", "\1"}); });
        writeTag(file, "EXIF:Make", "Maker");
        SettingsDraft draft = this->draft();
        draft.removeMetadata = false;
        const auto copy = copied(file, draft);
        EXPECT_EQ(tagOf(copy, "ICC_Profile:all"), "");
        EXPECT_EQ(tagOf(copy, "PNG:SRGBRendering"), "");
        EXPECT_EQ(tagOf(copy, "EXIF:Make"), "Maker\n");
    }
}

TEST_F(LosslessCopy, IsNotMadeWhereColoursAreToBeConverted)
{
    expectKept(smallJpeg("p3.jpg", {.profile = "p3"}), draft());
    test::Pixels inks = test::corneredPicture(64, 48);
    inks.bands = 4;
    inks.width = 48;
    const auto file = smallJpeg("ink.jpg", {.inkToCmyk = true}, inks);
    expectKept(file, draft());
    EXPECT_TRUE(readBytes(copied(file, keeping())) == readBytes(file));
}

// A camera says so in its EXIF alone.
TEST_F(LosslessCopy, IsNotMadeWhereColoursDependOnWhatIsToBeRemoved)
{
    const auto file = smallJpeg("adobe.jpg");
    outputOf("exiftool -q -overwrite_original -InteropIndex=R03 -ColorSpace#=65535 '" + file.string() + "'");
    SettingsDraft draft = keeping();
    EXPECT_TRUE(readBytes(copied(file, draft)) == readBytes(file));
    fs::remove_all(m_out);
    fs::create_directories(m_out);
    draft.removeMetadata = true;
    expectKept(file, draft);
}

TEST_F(LosslessCopy, SaysOfColoursWhatTheOriginalSays)
{
    // Three components of RGB, which the names of the components do not tell.
    const auto file = smallJpeg("a.jpg");
    std::string bytes = readBytes(file);
    bytes.erase(2, 18); // JFIF's segment
    const std::string adobe = jpegSegment(0xEE, std::string("Adobe\0\x64\0\0\0\0\0", 12));
    writeText(file, bytes.substr(0, 2) + adobe + jpegSegment(0xFE, "remark") + bytes.substr(2));
    const auto copy = copied(file, draft());
    EXPECT_EQ(tagOf(copy, "APP14:ColorTransform"), "0\n");
    EXPECT_EQ(tagOf(copy, "Comment"), "");
}

TEST_F(LosslessCopy, IsNotMadeOfWhatWouldTurn)
{
    EXPECT_THAT(optimize(photo("a.jpg", {.orientation = 6}), draft()).message, Not(HasSubstr("Copied")));
    EXPECT_THAT(optimize(photo("b.jpg", {.orientation = 6}), keeping()).message, Not(HasSubstr("Copied")));
    fs::remove_all(m_out);
    fs::create_directories(m_out);
    // The image library does not see a turn that stands behind the pixels.
    const auto png = smallPng("late.png");
    writeTag(png, "EXIF:Orientation#", "6");
    rewritePng(png, [](test::PngChunks& chunks) {
        const auto exif = std::ranges::find_if(chunks, [](auto& chunk) { return chunk.first == "eXIf"; });
        ASSERT_NE(exif, chunks.end());
        std::rotate(exif, exif + 1, chunks.end() - 1);
    });
    expectKept(png, keeping());
    copied(png, draft());
}

TEST_F(LosslessCopy, IsNotMadeOfAnimations)
{
    const auto png = smallPng("a.png");
    rewritePng(png, [](test::PngChunks& chunks) {
        chunks.insert(chunks.begin() + 1, {"acTL", std::string("\0\0\0\3\0\0\0\0", 8)});
    });
    EXPECT_EQ(optimize(png, draft()).message, "Saved 20 bytes. Only the first of 3 frames");
}

TEST_F(LosslessCopy, HasTheLookOfTheOutputAlsoOnABrightDisplay)
{
    const auto file = smallJpeg("a.jpg");
    insert(file, jpegSegment(0xE2, std::string("urn:iso:std:iso:ts:21496:-1\0\0\0\0\0", 32)));
    expectKept(file, keeping());
    const auto result = optimize(file, draft());
    EXPECT_EQ(result.message, "Copied: the output would not be smaller. HDR gain map dropped");
}

TEST_F(LosslessCopy, LeavesNoListOfPicturesThatLeadsAstray)
{
    const auto file = smallJpeg("a.jpg", {.profile = "srgb"});
    insert(file, jpegSegment(0xE2, std::string("MPF\0MM\0\x2A\0\0\0\x08\0\0\0\0\0\0", 18)));
    SettingsDraft draft = this->draft();
    draft.removeMetadata = false;
    EXPECT_THAT(optimize(file, draft).message, testing::StartsWith("Saved "));
    EXPECT_THAT(readBytes(copied(file, this->draft())), Not(HasSubstr("MPF")));
}

TEST_F(LosslessCopy, IsNotMadeOfDamagedFiles)
{
    const auto file = smallJpeg("a.jpg");
    writeText(file, readBytes(file).substr(0, fs::file_size(file) / 2));
    EXPECT_EQ(failureOf(file, keeping()), "The image could not be read.");
    EXPECT_EQ(filesIn(m_out), 0u);
    // No end marker: the picture is whole, but it cannot be told from what follows.
    const auto endless = smallJpeg("b.jpg");
    writeText(endless, readBytes(endless).substr(0, fs::file_size(endless) - 2));
    expectKept(endless, draft());
}

TEST_F(LosslessCopy, GoesTheWayOfEveryOutput)
{
    const auto file = smallJpeg("a.jpg");
    fs::permissions(file, fs::perms::owner_read | fs::perms::owner_write);
    fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(48));
    const auto time = fs::last_write_time(file);
    const std::string bytes = readBytes(file);
    writeText(m_out / "x-a.jpeg", "in the way");

    SettingsDraft draft = keeping();
    draft.filenamePrefix = "x-";
    draft.warnBeforeOverwrite = true;
    m_answer = false;
    EXPECT_EQ(failureOf(file, draft), "Skipped because the output file already exists.");
    EXPECT_EQ(readBytes(m_out / "x-a.jpeg"), "in the way");

    m_answer = true;
    draft.moveOriginalToTrash = true;
    FileTrace trace;
    m_services.trace = &trace;
    const auto result = optimize(file, draft);
    EXPECT_EQ(*result.outputURL, m_out / "x-a.jpeg");
    EXPECT_EQ(readBytes(m_out / "x-a.jpeg"), bytes);
    EXPECT_EQ(fs::last_write_time(m_out / "x-a.jpeg"), time);
    EXPECT_EQ(fs::status(m_out / "x-a.jpeg").permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(readBytes(m_trash / "a.jpg"), bytes);
    EXPECT_TRUE(trace.isOriginalTrashed);
    EXPECT_FALSE(trace.outputDigest.empty());
}

TEST_F(LosslessCopy, KeepsTheOriginalWhereNothingIsWritten)
{
    SettingsDraft draft = this->draft();
    draft.moveOriginalToTrash = true;
    expectKept(smallJpeg("p3.jpg", {.profile = "p3"}), draft);
    EXPECT_TRUE(fs::exists(m_in / "p3.jpg"));
    EXPECT_EQ(filesIn(m_trash), 0u);
}

} // namespace
} // namespace lumora
