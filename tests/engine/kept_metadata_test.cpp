// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata as an independent reader finds it.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::outputOf;
using test::settings;
using test::SettingsDraft;
using testing::HasSubstr;
using testing::IsEmpty;

class KeptMetadata : public testing::TestWithParam<OutputFormat>
{
protected:
    KeptMetadata()
    {
        test::save(m_folder / "thumb.jpg", test::uniformPicture(16, 12, {1, 2, 3}));
        test::save(m_folder / "a.jpg", test::corneredPicture(64, 48));
        outputOf(
            "exiftool -q -overwrite_original -Make=Maker -Model='Model One' -DateTimeOriginal='2020:01:02 "
            "03:04:05'"
            " -ExposureTime=1/125 -GPSLatitude=12.5 -GPSLatitudeRef=N -GPSLongitude=7 -GPSLongitudeRef=E"
            " -IPTC:Keywords=harbour -XMP-dc:Title='A title' -XMP-tiff:Orientation#=6 -Comment='a remark'"
            " -Orientation#=6 '-ThumbnailImage<=" +
            (m_folder / "thumb.jpg").string() + "' '" + (m_folder / "a.jpg").string() + "'");
    }

    std::filesystem::path optimized(SettingsDraft draft)
    {
        draft.outputFormat = GetParam();
        draft.filenameSuffix = "-out";
        return *ImageOptimizer::optimize(m_folder / "a.jpg", settings(draft), test::localServices())
                    .outputURL;
    }
    static std::string tag(const std::filesystem::path& file, const std::string& name)
    {
        return outputOf("exiftool -s3 -n -" + name + " '" + file.string() + "'");
    }

    test::TemporaryDirectory m_folder;
};

TEST_P(KeptMetadata, IsFoundByAnIndependentReader)
{
    const auto file = optimized({.removeMetadata = false});
    EXPECT_EQ(tag(file, "EXIF:Make"), "Maker\n");
    EXPECT_EQ(tag(file, "EXIF:Model"), "Model One\n");
    EXPECT_EQ(tag(file, "EXIF:DateTimeOriginal"), "2020:01:02 03:04:05\n");
    EXPECT_EQ(tag(file, "EXIF:ExposureTime"), "0.008\n");
    EXPECT_EQ(tag(file, "EXIF:GPSLatitude"), "12.5\n");
    EXPECT_EQ(tag(file, "XMP:Title"), "A title\n");
    if (GetParam() != OutputFormat::heic) { // that container has no place for it
        EXPECT_EQ(tag(file, "IPTC:Keywords"), "harbour\n");
    }
}

TEST_P(KeptMetadata, SpeaksOfTheNewPicture)
{
    const auto file = optimized({.maximumPixels = 24, .removeMetadata = false});
    EXPECT_EQ(tag(file, "EXIF:ExifImageWidth"), "24\n");
    EXPECT_EQ(tag(file, "EXIF:ExifImageHeight"), "32\n");
    for (const char* turn : {"EXIF:Orientation", "XMP:Orientation"}) {
        EXPECT_THAT(tag(file, turn), testing::AnyOf("", "1\n")) << turn;
    }
    EXPECT_THAT(tag(file, "ThumbnailImage"), IsEmpty());
    EXPECT_EQ(test::load(file).width, 24);
}

TEST_P(KeptMetadata, IsGoneWhenItIsToBeRemoved)
{
    const auto file = optimized({});
    const std::string everything = outputOf("exiftool -a -G1 -s '" + file.string() + "'");
    for (const char* trace : {"[ExifIFD]", "[GPS]", "[IPTC]", "[XMP", "[IFD1]", "Make ", "Comment",
                              "Thumbnail", "harbour", "[ICC", "[PNG-pHYs]", "SRGBRendering", "Gamma"}) {
        EXPECT_THAT(everything, testing::Not(HasSubstr(trace)));
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, KeptMetadata,
                         testing::Values(OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic,
                                         OutputFormat::original),
                         [](const auto& instance) { return std::string(rawValue(instance.param)); });

TEST(KeptXmp, NamesTheProfileThatIsInTheFile)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.jpg", test::corneredPicture(64, 48), {.profile = "p3"});
    const auto field = [](const std::filesystem::path& file, const std::string& name) {
        return outputOf("exiftool -s3 -" + name + " '" + file.string() + "'");
    };
    const std::string profile = field(folder / "a.jpg", "ICC_Profile:ProfileDescription");
    outputOf("exiftool -q -overwrite_original -XMP-photoshop:ICCProfileName='" +
             profile.substr(0, profile.size() - 1) + "' -XMP-dc:Title=T '" + (folder / "a.jpg").string() +
             "'");
    const auto written = [&](bool removesProfile) {
        return *ImageOptimizer::optimize(folder / "a.jpg",
                                         settings({.outputFormat = OutputFormat::png,
                                                   .optimizeColorForSharing = false,
                                                   .removeColorManagement = removesProfile,
                                                   .removeMetadata = false}),
                                         test::localServices())
                    .outputURL;
    };
    EXPECT_EQ(field(written(false), "XMP:ICCProfileName"), profile);
    EXPECT_EQ(field(written(true), "XMP:ICCProfileName"), "");
    EXPECT_EQ(field(written(true), "XMP:Title"), "T\n");
}

TEST(KeptXmp, KeepsItsWordingWhereNothingInItChanges)
{
    const test::TemporaryDirectory folder;
    for (const char* name : {"a.jpg", "a.png"}) {
        const auto source = folder / name;
        test::save(source, test::corneredPicture(64, 48));
        test::writeTag(source, "XMP-dc:Title", "T");
        const auto packetIn = [](const std::filesystem::path& file) {
            return outputOf("exiftool -b -XMP '" + file.string() + "' | tr -d '[:space:]'");
        };
        ASSERT_THAT(packetIn(source), HasSubstr("dc:title")) << name;
        const auto result = ImageOptimizer::optimize(
            source,
            settings({.outputFormat = OutputFormat::jpeg, .removeMetadata = false, .filenameSuffix = "-out"}),
            test::localServices());
        EXPECT_EQ(packetIn(*result.outputURL), packetIn(source)) << name;
    }
}

TEST(KeptTiffMetadata, SurvivesInATiff)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.tif", test::corneredPicture(64, 48));
    outputOf(
        "exiftool -q -overwrite_original -Make=Maker -GPSLatitude=12.5 -GPSLatitudeRef=N -XMP-dc:Title=T "
        "-IPTC:Keywords=harbour '" +
        (folder / "a.tif").string() + "'");
    const auto result = ImageOptimizer::optimize(
        folder / "a.tif", settings({.outputFormat = OutputFormat::original, .removeMetadata = false}),
        test::localServices());
    const auto tag = [&](const std::string& name) {
        return outputOf("exiftool -s3 -n -" + name + " '" + result.outputURL->string() + "'");
    };
    EXPECT_EQ(tag("Make"), "Maker\n");
    EXPECT_EQ(tag("EXIF:GPSLatitude"), "12.5\n");
    EXPECT_EQ(tag("XMP:Title"), "T\n");
    EXPECT_EQ(tag("IPTC:Keywords"), "harbour\n");
    EXPECT_EQ(test::load(*result.outputURL).bytes, test::corneredPicture(64, 48).bytes);
}

} // namespace
} // namespace lumora
