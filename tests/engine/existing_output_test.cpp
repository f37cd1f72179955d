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

} // namespace
} // namespace lumora
