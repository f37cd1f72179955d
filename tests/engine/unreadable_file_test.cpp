// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files that give no picture, and that nothing is touched by then.
#include "formats/image_source.h"
#include "tests/engine/optimizer_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace lumora {
namespace {

using UnreadableFile = test::OptimizerTest;

struct Unreadable
{
    const char* name;
    std::string bytes;
};

void PrintTo(const Unreadable& c, std::ostream* out)
{
    *out << c.name;
}

class UnreadableBytes : public UnreadableFile, public testing::WithParamInterface<Unreadable>
{
};

TEST_P(UnreadableBytes, FailsAndTouchesNothing)
{
    test::writeText(m_in / "a.jpg", GetParam().bytes);
    test::writeText(m_in / "a.webp", "an earlier output");
    EXPECT_EQ(failureOf(m_in / "a.jpg"), "The image could not be read.");
    EXPECT_EQ(test::readBytes(m_in / "a.jpg"), GetParam().bytes);
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "an earlier output");
    EXPECT_EQ(filesIn(m_in), 2U);
    EXPECT_EQ(filesIn(m_temporary), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, UnreadableBytes,
    testing::Values(
        Unreadable{"Empty", ""}, Unreadable{"Text", "This is no picture at all, only words in a row."},
        Unreadable{"Pdf", "%PDF-1.4\n1 0 obj << /Type /Catalog >> endobj"},
        Unreadable{"Svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect/></svg>"},
        Unreadable{"Exr", std::string("v/1\x01\x02\0\0\0channels\0chlist\0", 24)},
        Unreadable{"Script", "#!/bin/sh\nrm -rf everything\n"},
        Unreadable{"PortablePixmap", "P6\n1 1\n255\nabc"}, Unreadable{"OnlyAJpegMark", "\xFF\xD8\xFF"},
        Unreadable{"OnlyAPngMark", "\x89PNG\r\n\x1A\n"}, Unreadable{"OnlyABmpMark", "BM"}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(UnreadableFile, TreatsMissingFilesAndFoldersAsUnreadable)
{
    EXPECT_EQ(failureOf(m_in / "missing.png"), "The image could not be read.");
    std::filesystem::create_directories(m_in / "album.jpg");
    EXPECT_EQ(failureOf(m_in / "album.jpg"), "The image could not be read.");
    ASSERT_EQ(mkfifo((m_in / "pipe.png").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(m_in / "pipe.png"), "The image could not be read.");
}

TEST_F(UnreadableFile, FailsTruncatedFilesOfEveryFormatBeforeTouchingAnEarlierOutput)
{
    for (const char* name : {"a.jpg", "a.png", "a.tif", "a.gif", "a.webp", "a.heic"}) {
        const auto source = photo(name);
        std::filesystem::resize_file(source, std::filesystem::file_size(source) * 6 / 10);
        test::writeText(m_in / "a-out.jpg", "an earlier output");
        EXPECT_EQ(failureOf(source, {.outputFormat = OutputFormat::jpeg, .filenameSuffix = "-out"}),
                  "The image could not be read.")
            << name;
        EXPECT_EQ(test::readBytes(m_in / "a-out.jpg"), "an earlier output") << name;
    }
}

TEST_F(UnreadableFile, FindsDamageBelowTheRowsThatAReducedPictureNeeds)
{
    test::save(m_in / "a.png", test::corneredPicture(600, 400));
    std::filesystem::resize_file(m_in / "a.png", std::filesystem::file_size(m_in / "a.png") - 60);
    EXPECT_EQ(failureOf(m_in / "a.png", {.maximumPixels = 10}), "The image could not be read.");
}

TEST_F(UnreadableFile, RefusesPicturesAboveThreeHundredMegapixels)
{
    test::writeText(m_in / "huge.png", test::pngClaiming(60000, 60000));
    EXPECT_EQ(failureOf(m_in / "huge.png", {.maximumPixels = 100}), "The image could not be read.");
    const auto source = ImageSource::open(m_in / "huge.png");
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().description, "more than 300 megapixels");
}

} // namespace
} // namespace lumora
