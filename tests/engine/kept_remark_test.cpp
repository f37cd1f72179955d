// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Remarks and the time of the last change, as an independent reader finds them.
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

struct Road
{
    const char* name;
    const char* source;
    OutputFormat output;
};

void PrintTo(const Road& road, std::ostream* out)
{
    *out << road.name;
}

std::filesystem::path optimized(const std::filesystem::path& file, OutputFormat format, bool removesMetadata)
{
    return *ImageOptimizer::optimize(
                file,
                settings(
                    {.outputFormat = format, .removeMetadata = removesMetadata, .filenameSuffix = "-out"}),
                test::localServices())
                .outputURL;
}

class KeptRemark : public testing::TestWithParam<Road>
{
protected:
    KeptRemark() { test::save(m_file, test::corneredPicture(16, 12)); }

    const test::TemporaryDirectory m_folder;
    const std::filesystem::path m_file = m_folder / GetParam().source;
};

TEST_P(KeptRemark, GoesWhereTheContainerKeepsSuchWords)
{
    test::writeTag(m_file, "Comment", "seen from the harbour");
    ASSERT_EQ(tagOf(m_file, "Comment"), "seen from the harbour\n");
    EXPECT_EQ(tagOf(optimized(m_file, GetParam().output, false), "Comment"), "seen from the harbour\n");
    EXPECT_EQ(tagOf(optimized(m_file, GetParam().output, true), "Comment"), "");
}

INSTANTIATE_TEST_SUITE_P(, KeptRemark,
                         testing::Values(Road{"JpegToJpeg", "a.jpg", OutputFormat::jpeg},
                                         Road{"JpegToPng", "a.jpg", OutputFormat::png},
                                         Road{"GifToJpeg", "a.gif", OutputFormat::jpeg},
                                         Road{"GifToPng", "a.gif", OutputFormat::png},
                                         Road{"PngToJpeg", "a.png", OutputFormat::jpeg},
                                         Road{"PngToPng", "a.png", OutputFormat::png}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(KeptRemarks, OfAJpegAreAllKept)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.jpg", test::corneredPicture(16, 12));
    const std::string bytes = test::readBytes(folder / "a.jpg");
    const auto segment = [](const std::string& words) {
        return std::string("\xFF\xFE\0", 3) + static_cast<char>(words.size() + 2) + words;
    };
    test::writeText(folder / "a.jpg", bytes.substr(0, 2) + segment("one") +
                                          segment("Gr\xF6\xDF"
                                                  "e") +
                                          bytes.substr(2));
    EXPECT_EQ(test::outputOf("exiftool -a -s3 -Comment '" +
                             optimized(folder / "a.jpg", OutputFormat::jpeg, false).string() + "'"),
              test::outputOf("exiftool -a -s3 -Comment '" + (folder / "a.jpg").string() + "'"));
    EXPECT_EQ(test::outputOf("exiftool -a -s3 -Comment '" +
                             optimized(folder / "a.jpg", OutputFormat::png, false).string() + "'"),
              "one\nGröße\n");
}

TEST(KeptTime, OfAPngStaysInAPng)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.png", test::corneredPicture(16, 12));
    test::writeTag(folder / "a.png", "PNG:ModifyDate", "2019:02:03 04:05:06");
    ASSERT_EQ(tagOf(folder / "a.png", "PNG:ModifyDate"), "2019:02:03 04:05:06\n");
    EXPECT_EQ(tagOf(optimized(folder / "a.png", OutputFormat::png, false), "PNG:ModifyDate"),
              "2019:02:03 04:05:06\n");
    EXPECT_EQ(tagOf(optimized(folder / "a.png", OutputFormat::png, true), "PNG:ModifyDate"), "");
}

} // namespace
} // namespace lumora
