// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The size on paper and the fields that describe how a JPEG stores its colours, as an independent reader
// finds them.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::settings;
using test::tagOf;

struct Case
{
    const char* name;
    const char* source;
    const char* tags; // as exiftool writes them
};

void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.name;
}

class KeptResolution : public testing::TestWithParam<Case>
{
protected:
    std::filesystem::path optimized(OutputFormat format, bool removesMetadata)
    {
        const auto source = m_folder / GetParam().source;
        test::save(source, test::corneredPicture(64, 48));
        test::outputOf("exiftool -q -overwrite_original " + std::string(GetParam().tags) + " '" +
                       source.string() + "'");
        return *ImageOptimizer::optimize(source,
                                         settings({.outputFormat = format,
                                                   .removeMetadata = removesMetadata,
                                                   .filenameSuffix = "-out"}),
                                         test::localServices())
                    .outputURL;
    }

    test::TemporaryDirectory m_folder;
};

TEST_P(KeptResolution, IsInTheHeaderOfAJpeg)
{
    const auto file = optimized(OutputFormat::jpeg, false);
    EXPECT_EQ(tagOf(file, "JFIF:XResolution"), "300\n");
    EXPECT_EQ(tagOf(file, "JFIF:YResolution"), "150\n");
    EXPECT_EQ(tagOf(file, "JFIF:ResolutionUnit"), "1\n");
}

TEST_P(KeptResolution, IsInTheDensityOfAPng)
{
    const auto file = optimized(OutputFormat::png, false);
    EXPECT_EQ(tagOf(file, "PNG-pHYs:PixelsPerUnitX"), "11811\n");
    EXPECT_EQ(tagOf(file, "PNG-pHYs:PixelsPerUnitY"), "5906\n");
    EXPECT_EQ(tagOf(file, "PNG-pHYs:PixelUnits"), "1\n");
}

TEST_P(KeptResolution, IsGoneWithTheMetadata)
{
    EXPECT_EQ(tagOf(optimized(OutputFormat::png, true), "PNG-pHYs:all"), "");
    const auto jpeg = optimized(OutputFormat::jpeg, true);
    EXPECT_EQ(tagOf(jpeg, "JFIF:ResolutionUnit"), "0\n");
    EXPECT_EQ(tagOf(jpeg, "JFIF:XResolution"), "1\n");
}

INSTANTIATE_TEST_SUITE_P(
    Sources, KeptResolution,
    testing::Values(Case{"HeaderOfAJpeg", "a.jpg",
                         "-all= -JFIF:XResolution=300 -JFIF:YResolution=150 -JFIF:ResolutionUnit=inches"},
                    Case{"ExifOfAJpeg", "a.jpg",
                         "-EXIF:XResolution=300 -EXIF:YResolution=150 -EXIF:ResolutionUnit=inches"},
                    Case{"Png", "a.png",
                         "-PNG-pHYs:PixelsPerUnitX=11811 -PNG-pHYs:PixelsPerUnitY=5906 "
                         "-PNG-pHYs:PixelUnits=meters"},
                    Case{"Tiff", "a.tif",
                         "-EXIF:XResolution=118.11 -EXIF:YResolution=59.055 -EXIF:ResolutionUnit=cm"}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(KeptColourFields, SayHowTheNewPictureIsStored)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.jpg", test::corneredPicture(64, 48));
    test::outputOf("exiftool -q -overwrite_original -YCbCrPositioning#=2 -Make=M '" +
                   (folder / "a.jpg").string() + "'");
    const auto positionIn = [&](OutputFormat format) {
        const auto result = ImageOptimizer::optimize(
            folder / "a.jpg",
            settings({.outputFormat = format, .removeMetadata = false, .filenameSuffix = "-out"}),
            test::localServices());
        EXPECT_EQ(tagOf(*result.outputURL, "EXIF:Make"), "M\n");
        return tagOf(*result.outputURL, "EXIF:YCbCrPositioning");
    };
    EXPECT_EQ(positionIn(OutputFormat::jpeg), "1\n"); // in the middle, as the encoder puts them
    EXPECT_EQ(positionIn(OutputFormat::png), "");
}

} // namespace
} // namespace lumora
