// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files that are in the way of an output.
#include "tests/engine/optimizer_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using testing::StartsWith;

using ExistingOutput = test::OptimizerTest;

TEST_F(ExistingOutput, SkipsAnExistingOutputWhenToldTo)
{
    const auto source = photo("my photo.png");
    test::writeText(m_in / "my photo.webp", "an earlier output");
    m_answer = false;
    EXPECT_EQ(failureOf(source, {.warnBeforeOverwrite = true}),
              "Skipped because the output file already exists.");
    EXPECT_EQ(test::readBytes(m_in / "my photo.webp"), "an earlier output");
    EXPECT_THAT(m_asked, testing::ElementsAre("my photo.webp"));
}

TEST_F(ExistingOutput, ReplacesAnExistingOutputWhenToldTo)
{
    const auto source = photo("a.png");
    test::writeText(m_in / "a.webp", "an earlier output");
    EXPECT_TRUE(optimize(source, {.warnBeforeOverwrite = true}).isSuccess);
    EXPECT_THAT(test::readBytes(m_in / "a.webp"), StartsWith("RIFF"));
}

TEST_F(ExistingOutput, AsksOnceForEachCollidingFileAndNotForOthers)
{
    const auto a = photo("a.png");
    const auto b = photo("b.png");
    const auto c = photo("c.png");
    test::writeText(m_in / "a.webp", "");
    test::writeText(m_in / "c.webp", "");
    for (const auto& file : {a, b, c})
        optimize(file, {.warnBeforeOverwrite = true});
    EXPECT_THAT(m_asked, testing::ElementsAre("a.webp", "c.webp"));
}

TEST_F(ExistingOutput, ReplacesWithoutAskingWhenNotWarning)
{
    const auto source = photo("a.png");
    test::writeText(m_in / "a.webp", "an earlier output");
    EXPECT_TRUE(optimize(source).isSuccess);
    EXPECT_THAT(test::readBytes(m_in / "a.webp"), StartsWith("RIFF"));
    EXPECT_TRUE(m_asked.empty());
}

TEST_F(ExistingOutput, PassesOnWhyAnExistingOutputCannotBeRemoved)
{
    const auto source = photo("a.png");
    std::filesystem::create_directories(m_in / "a.webp" / "inside");
    const std::string failure = failureOf(source);
    EXPECT_THAT(failure, testing::HasSubstr("a.webp"));
    EXPECT_TRUE(std::filesystem::exists(m_in / "a.webp" / "inside"));
}

TEST_F(ExistingOutput, StaysWhenTheTypeCannotBeWrittenAnyway)
{
    const auto source = photo("a.webp");
    std::filesystem::create_directory(m_folder / "out");
    test::writeText(m_folder / "out" / "a.webp", "an earlier output");
    EXPECT_EQ(failureOf(source, {.outputFormat = OutputFormat::original,
                                 .destinationMode = DestinationMode::selectedFolder,
                                 .destinationFolderURL = m_folder / "out"}),
              "Original Format is not supported by this macOS ImageIO installation.");
    EXPECT_EQ(test::readBytes(m_folder / "out" / "a.webp"), "an earlier output");
}

TEST_F(ExistingOutput, ReplacesALinkAndNotWhatItLeadsTo)
{
    const auto source = photo("a.png");
    test::writeText(m_folder / "treasure", "keep me");
    std::filesystem::create_symlink(m_folder / "treasure", m_in / "a.webp");
    optimize(source);
    EXPECT_EQ(test::readBytes(m_folder / "treasure"), "keep me");
    EXPECT_FALSE(std::filesystem::is_symlink(m_in / "a.webp"));
}

TEST_F(ExistingOutput, NeverReplacesTheInputThroughALinkedFolder)
{
    const auto source = photo("a.png");
    const std::string before = test::readBytes(source);
    std::filesystem::create_directory_symlink(m_in, m_folder / "link");
    const auto result = optimize(source, {.outputFormat = OutputFormat::png,
                                          .destinationMode = DestinationMode::selectedFolder,
                                          .destinationFolderURL = m_folder / "link"});
    EXPECT_EQ(test::readBytes(source), before);
    EXPECT_EQ(result.outputURL->filename(), "a-optimized.png");
}

TEST_F(ExistingOutput, StaysAsItWasWhenTheNewOneCannotBeMade)
{
    const auto source = photo("a.png");
    test::writeText(m_in / "a.webp", "an earlier output");
    installBundled("exit 3");
    EXPECT_NE(failureOf(source), "no failure");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "an earlier output");
    std::filesystem::remove(bundled());
    EXPECT_NE(failureOf(source), "no failure");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "an earlier output");

    test::save(m_in / "tall.png", test::uniformPicture(1, 16385, {1, 2, 3}));
    test::writeText(m_in / "tall.heic", "an earlier output");
    EXPECT_NE(
        failureOf(m_in / "tall.png", {.resizeMode = ResizeMode::none, .outputFormat = OutputFormat::heic}),
        "no failure");
    EXPECT_EQ(test::readBytes(m_in / "tall.heic"), "an earlier output");
}

TEST_F(ExistingOutput, IsAskedAboutWhenItAppearsWhileThePictureIsEncoded)
{
    const auto source = photo("a.png");
    test::save(m_folder / "made.webp", test::load(source));
    installWriting(m_folder / "made.webp", "printf 'another file' > '" + (m_in / "a.webp").string() + "'");
    m_answer = false;
    EXPECT_EQ(failureOf(source, {.resizeMode = ResizeMode::none, .warnBeforeOverwrite = true}),
              "Skipped because the output file already exists.");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "another file");
    std::filesystem::remove(m_in / "a.webp");
    m_answer = true;
    EXPECT_EQ(failureOf(source, {.resizeMode = ResizeMode::none, .warnBeforeOverwrite = true}), "no failure");
    EXPECT_THAT(test::readBytes(m_in / "a.webp"), StartsWith("RIFF"));
    EXPECT_THAT(m_asked, testing::ElementsAre("a.webp", "a.webp"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_in), {}), 2) << "a draft remains";
}

TEST_F(ExistingOutput, NeverReplacesTheInputThroughALinkUnderTheSecondName)
{
    test::save(m_in / "a-optimized.jpg", test::corneredPicture(32, 24));
    std::filesystem::create_symlink("a-optimized.jpg", m_in / "a.jpg");
    const std::string before = test::readBytes(m_in / "a-optimized.jpg");
    const auto result = optimize(m_in / "a.jpg", {.outputFormat = OutputFormat::jpeg});
    EXPECT_EQ(result.outputURL, m_in / "a-optimized 2.jpg");
    EXPECT_EQ(test::readBytes(m_in / "a-optimized.jpg"), before);
}

} // namespace
} // namespace lumora
