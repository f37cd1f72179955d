// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a row says of what the output lacks, and that it says nothing where nothing is lacking.
#include "tests/engine/optimizer_test.h"
#include "tests/support/exif_builder.h"
#include "tests/support/jpeg_segment.h"
#include "tests/support/program_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::SettingsDraft;
using testing::EndsWith;
using testing::MatchesRegex;

class LeftBehind : public test::OptimizerTest
{
protected:
    // Without what the row says in any case.
    std::string lossesOf(const std::filesystem::path& file, SettingsDraft draft)
    {
        draft.filenameSuffix = "-out";
        const std::string message = optimize(file, draft).message;
        const std::size_t end = message.find(". ");
        EXPECT_THAT(message.substr(0, end), MatchesRegex("Converted|Saved [0-9.]+ ([KMG]B|bytes)"));
        return end == std::string::npos ? "" : message.substr(end + 2);
    }

    std::filesystem::path saved(const std::string& name, const test::Pixels& pixels,
                                const test::SaveOptions& options = {})
    {
        test::save(m_in / name, pixels, options);
        return m_in / name;
    }

    std::filesystem::path tagged(const std::string& name, const std::string& tag, const std::string& value)
    {
        auto file = photo(name);
        test::writeTag(file, tag, value);
        return file;
    }

    static SettingsDraft keeping(OutputFormat format)
    {
        return {.outputFormat = format, .removeMetadata = false};
    }
    static SettingsDraft untouched(OutputFormat format)
    {
        return {.outputFormat = format, .optimizeColorForSharing = false, .removeColorManagement = false};
    }
};

TEST_F(LeftBehind, CountsFramesAndPages)
{
    const test::Pixels three = test::corneredPicture(16, 36);
    for (const char* name : {"a.gif", "a.webp"}) {
        EXPECT_EQ(lossesOf(saved(name, three, {.pageHeight = 12}), {}), "Only the first of 3 frames") << name;
        EXPECT_EQ(lossesOf(saved(name, three), {}), "") << name;
    }
    EXPECT_EQ(lossesOf(saved("a.tif", three, {.pageHeight = 12}), {}), "Only the first of 3 pages");
    EXPECT_EQ(lossesOf(saved("a.tif", three), {}), "");
}

TEST_F(LeftBehind, CountsNoSmallCopyAsAPage)
{
    const auto file = saved("a.tif", test::corneredPicture(16, 24), {.pageHeight = 12});
    test::outputOf("exiftool -q -overwrite_original -IFD1:SubfileType#=1 '" + file.string() + "'");
    ASSERT_EQ(test::tagOf(file, "IFD1:SubfileType"), "1\n");
    EXPECT_EQ(lossesOf(file, {}), "");
}

TEST_F(LeftBehind, TellsWhatTransparencyBecame)
{
    test::Pixels picture = test::uniformPicture(16, 12, {10, 200, 30, 255});
    EXPECT_EQ(lossesOf(saved("opaque.png", picture), {}), "");
    EXPECT_EQ(lossesOf(saved("opaque.png", picture), {.outputFormat = OutputFormat::jpeg}), "");
    picture.bytes.back() = 254; // one pixel, the last
    const auto file = saved("a.png", picture);
    EXPECT_EQ(lossesOf(file, {}), "Transparency became black");
    EXPECT_EQ(lossesOf(file, {.outputFormat = OutputFormat::webpLossless}), "Transparency became black");
    EXPECT_EQ(lossesOf(file, {.outputFormat = OutputFormat::jpeg}), "Transparency became white");
    EXPECT_EQ(lossesOf(file, untouched(OutputFormat::jpeg)), "Transparency became white");
    EXPECT_EQ(lossesOf(file, {.outputFormat = OutputFormat::png}), "");
    EXPECT_EQ(lossesOf(file, {.outputFormat = OutputFormat::heic}), "");
}

TEST_F(LeftBehind, TellsThatDepthIsLost)
{
    const auto deep = photo("deep.png", {.sixteenBits = true});
    EXPECT_EQ(lossesOf(deep, {}), "16 bits became 8");
    EXPECT_EQ(lossesOf(deep, {.outputFormat = OutputFormat::png}), "16 bits became 8");
    EXPECT_EQ(lossesOf(deep, untouched(OutputFormat::png)), "");
    EXPECT_EQ(lossesOf(deep, untouched(OutputFormat::jpeg)), "16 bits became 8");
    EXPECT_EQ(lossesOf(photo("deep.tif", {.sixteenBits = true}), {}), "16 bits became 8");
    EXPECT_EQ(lossesOf(photo("plain.tif"), {}), "");
}

TEST_F(LeftBehind, NamesMetadataThatTheContainerDoesNotHold)
{
    const auto camera = tagged("camera.jpg", "EXIF:Make", "Maker");
    EXPECT_EQ(lossesOf(camera, keeping(OutputFormat::webp)), "Metadata not kept: WebP");
    EXPECT_EQ(lossesOf(camera, {}), ""); // its removal was asked for
    EXPECT_EQ(lossesOf(camera, keeping(OutputFormat::jpeg)), "");
    EXPECT_EQ(lossesOf(photo("plain.jpg", {.orientation = 6}), keeping(OutputFormat::webp)), "");

    const auto credited = tagged("credited.jpg", "IPTC:Keywords", "harbour");
    EXPECT_EQ(lossesOf(credited, keeping(OutputFormat::heic)), "Metadata not kept: IPTC");
    EXPECT_EQ(lossesOf(credited, keeping(OutputFormat::png)), "");
    test::writeTag(credited, "Comment", "a remark");
    EXPECT_EQ(lossesOf(credited, keeping(OutputFormat::heic)), "Metadata not kept: IPTC, comments");

    const auto titled = tagged("titled.png", "PNG:Title", "Harbour");
    EXPECT_EQ(lossesOf(titled, keeping(OutputFormat::jpeg)), "Metadata not kept: PNG texts");
    EXPECT_EQ(lossesOf(titled, keeping(OutputFormat::png)), "");
    EXPECT_EQ(
        lossesOf(tagged("timed.png", "PNG:ModifyDate", "2019:02:03 04:05:06"), keeping(OutputFormat::jpeg)),
        "Metadata not kept: PNG time");
}

TEST_F(LeftBehind, NamesXmpThatIsTooLarge)
{
    const std::string blanks(std::size_t{17} << 20U, ' ');
    test::writeText(m_in / "packet", "<x:xmpmeta xmlns:x='adobe:ns:meta/'>" + blanks + "</x:xmpmeta>");
    for (const char* name : {"a.png", "a.tif", "a.webp", "a.heic"}) {
        const auto file = photo(name);
        test::outputOf("exiftool -q -m -overwrite_original '-XMP<=" + (m_in / "packet").string() + "' '" +
                       file.string() + "'");
        EXPECT_EQ(lossesOf(file, keeping(OutputFormat::png)), "Metadata not kept: XMP") << name;
    }
}

TEST_F(LeftBehind, NamesMetadataThatCannotBeWrittenAnew)
{
    const auto file = photo("a.jpg");
    const test::ExifBuilder exif(false);
    const std::string withPreview = "of a stranger: \xFF\xD8\xFF\xE0";
    test::writeText(file, test::jpegWithExif(test::readBytes(file), exif.block("Acme Cameras", withPreview)));
    EXPECT_EQ(lossesOf(file, keeping(OutputFormat::jpeg)), "Metadata not kept: maker note");

    const auto talkative = tagged("c.png", "EXIF:Make", "Maker");
    test::writeText(m_in / "remark", std::string(70'000, 'r'));
    test::outputOf("exiftool -q -overwrite_original '-EXIF:UserComment<=" + (m_in / "remark").string() +
                   "' '" + talkative.string() + "'");
    ASSERT_THAT(test::tagOf(talkative, "EXIF:UserComment"), testing::StartsWith("rrr"));
    EXPECT_EQ(lossesOf(talkative, keeping(OutputFormat::jpeg)), "Metadata not kept: EXIF");

    test::writeText(m_in / "packet", "<x:xmpmeta xmlns:x='adobe:ns:meta/'> damaged");
    const auto damaged = photo("b.jpg");
    test::outputOf("exiftool -q -m -overwrite_original '-XMP<=" + (m_in / "packet").string() + "' '" +
                   damaged.string() + "'");
    ASSERT_THAT(test::readBytes(damaged), testing::HasSubstr("> damaged"));
    EXPECT_EQ(lossesOf(damaged, keeping(OutputFormat::png)), "Metadata not kept: XMP");
}

TEST_F(LeftBehind, TellsOfAProfileThatWasToBeKept)
{
    const auto wide = photo("wide.jpg", {.profile = "p3"});
    EXPECT_EQ(lossesOf(wide, untouched(OutputFormat::webp)), "Colour profile not kept: WebP");
    EXPECT_EQ(lossesOf(wide, untouched(OutputFormat::png)), "");
    EXPECT_EQ(lossesOf(wide, {}), "");
    EXPECT_EQ(lossesOf(wide, {.removeColorManagement = false}), ""); // converted
    const auto ink = saved("ink.jpg", test::uniformPicture(16, 16, {0, 255, 255, 0}),
                           {.profile = "cmyk", .inkToCmyk = true});
    EXPECT_EQ(lossesOf(ink, untouched(OutputFormat::png)), "Colour profile not kept: PNG");
    EXPECT_EQ(lossesOf(ink, untouched(OutputFormat::jpeg)), "");
}

class LeftBehindGainMap : public LeftBehind
{
protected:
    static std::string packetOf(const std::string& schema)
    {
        return std::string("http://ns.adobe.com/xap/1.0/\0", 29) +
               "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF "
               "xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-"
               "ns#'><rdf:Description rdf:about='' xmlns:g='" +
               schema + "' g:Version='1.0'/></rdf:RDF></x:xmpmeta>";
    }
    std::filesystem::path jpegWith(const std::string& segments, const std::string& behind = {})
    {
        auto file = photo("a.jpg");
        const std::string bytes = test::readBytes(file);
        test::writeText(file, bytes.substr(0, 2) + segments + bytes.substr(2) + behind);
        return file;
    }
};

TEST_F(LeftBehindGainMap, IsNamedOfAJpegThatSaysSoItself)
{
    const std::string packet = test::jpegSegment(0xE1, packetOf("http://ns.adobe.com/hdr-gain-map/1.0/"));
    EXPECT_EQ(lossesOf(jpegWith(packet), {}), "HDR gain map dropped");
    // The packet speaks of nothing else, so nothing else is lost with it.
    EXPECT_EQ(lossesOf(jpegWith(packet), keeping(OutputFormat::jpeg)), "HDR gain map dropped");
    EXPECT_EQ(lossesOf(jpegWith(packet), keeping(OutputFormat::webp)), "HDR gain map dropped");
    const std::string standard =
        test::jpegSegment(0xE2, std::string("urn:iso:std:iso:ts:21496:-1\0\0\0\0\0", 32));
    EXPECT_EQ(lossesOf(jpegWith(standard), {}), "HDR gain map dropped");
    EXPECT_EQ(lossesOf(jpegWith(test::jpegSegment(0xE1, packetOf("http://ns.adobe.com/photoshop/1.0/"))), {}),
              "");
}

TEST_F(LeftBehindGainMap, IsNamedOfAJpegWhoseSecondPictureSaysSo)
{
    const std::string first = test::readBytes(photo("a.jpg"));
    for (const bool isGainMap : {true, false}) {
        const char* schema =
            isGainMap ? "http://ns.apple.com/HDRGainMap/1.0/" : "http://ns.adobe.com/photoshop/1.0/";
        const std::string second =
            first.substr(0, 2) + test::jpegSegment(0xE1, packetOf(schema)) + first.substr(2);
        const test::ExifBuilder list(true);
        const auto listOf = [&](std::size_t offset) {
            const std::string entries = std::string(16, '\0') + list.number(0, 4) +
                                        list.number(second.size(), 4) + list.number(offset, 4) +
                                        list.number(0, 4);
            return test::jpegSegment(0xE2, std::string("MPF\0MM", 6) + list.number(42, 2) +
                                               list.number(8, 4) + list.number(1, 2) +
                                               list.entry(0xB002, 7, 32, 26) + list.number(0, 4) + entries);
        };
        // Offsets count from the list's own "MM", eight bytes behind the segment's start.
        const std::size_t offset = first.size() + listOf(0).size() - 2 - 8;
        EXPECT_EQ(lossesOf(jpegWith(listOf(offset), second), {}), isGainMap ? "HDR gain map dropped" : "");
    }
}

TEST_F(LeftBehindGainMap, IsNamedOfAHeic)
{
    const auto file = saved("a.heic", test::uniformPicture(32, 32, {10, 20, 30, 99}));
    const std::string plain = test::readBytes(file);
    std::string bytes = plain;
    const std::string alpha = "urn:mpeg:hevc:2015:auxid:1";
    ASSERT_NE(bytes.find(alpha), std::string::npos);
    bytes.replace(bytes.find(alpha), alpha.size(), "urn:x:photo:aux:hdrgainmap");
    test::writeText(file, bytes);
    EXPECT_EQ(lossesOf(file, {}), "HDR gain map dropped");

    const auto combined = tagged("b.heic", "XMP-dc:Title", "T");
    EXPECT_EQ(lossesOf(combined, {}), "");
    bytes = test::readBytes(combined);
    bytes.replace(bytes.find("mime"), 4, "tmap");
    test::writeText(combined, bytes);
    EXPECT_EQ(lossesOf(combined, {}), "HDR gain map dropped");
}

TEST_F(LeftBehind, IsSaidBehindWhatTheRowSaysInAnyCase)
{
    test::Pixels picture = test::uniformPicture(16, 24, {10, 200, 30, 0});
    const auto file = saved("a.gif", picture, {.pageHeight = 12});
    test::writeTag(file, "Comment", "a remark");
    m_services.moveToTrash = [](const std::filesystem::path&) -> Status { return Error{"no"}; };
    const auto result = optimize(file, {.removeMetadata = false, .moveOriginalToTrash = true});
    EXPECT_THAT(result.message,
                EndsWith(". Original could not be moved to Trash. Only the first of 2 frames. "
                         "Transparency became black. Metadata not kept: WebP"));
}

} // namespace
} // namespace lumora
