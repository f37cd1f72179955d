// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of a file, and what its row says.
#include "tests/engine/optimizer_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using testing::StartsWith;

using Optimizer = test::OptimizerTest;

TEST_F(Optimizer, KeepsAnOutputThatGrewAndSaysConverted)
{
    test::save(m_in / "tiny.gif", test::uniformPicture(2, 2, {10, 20, 30}));
    const auto result = optimize(m_in / "tiny.gif", {.outputFormat = OutputFormat::jpeg});
    EXPECT_TRUE(result.isSuccess);
    EXPECT_GT(result.outputBytes, result.originalBytes);
    EXPECT_EQ(result.message, "Converted");
    EXPECT_TRUE(std::filesystem::exists(*result.outputURL));
}

TEST_F(Optimizer, GivesTheOutputThePermissionsOfTheOriginal)
{
    namespace fs = std::filesystem;
    using fs::perms;
    const auto source = photo("private.png");
    fs::permissions(source, perms::owner_read | perms::owner_write);
    for (const auto format : {OutputFormat::webp, OutputFormat::jpeg}) {
        const auto result = optimize(source, {.outputFormat = format});
        EXPECT_EQ(fs::status(*result.outputURL).permissions(), perms::owner_read | perms::owner_write);
    }
    fs::permissions(source, perms::all);
    const auto result = optimize(source, {.outputFormat = OutputFormat::jpeg});
    EXPECT_EQ(fs::status(*result.outputURL).permissions() & perms::others_write, perms::none);
}

TEST_F(Optimizer, SaysConvertedForEqualSizes)
{
    const auto source = photo("a.png");
    const auto size = std::filesystem::file_size(source);
    installWriting(webpOfSize(64, 48, size));
    const auto result = optimize(source);
    EXPECT_EQ(result.outputBytes, result.originalBytes);
    EXPECT_EQ(result.message, "Converted");
}

TEST_F(Optimizer, SaysWhatItSaved)
{
    const auto source = photo("a.png");
    installWriting(webpOfSize(64, 48, 500));
    test::writeText(m_in / "pad", "");
    std::filesystem::resize_file(source, 1'300'500); // data behind the picture's end is no damage
    const auto result = optimize(source);
    EXPECT_EQ(result.message, "Saved 1.3 MB");
    EXPECT_EQ(result.originalBytes, 1'300'500);
    EXPECT_EQ(result.outputBytes, 500);
    EXPECT_EQ(result.sourceURL, source);
    EXPECT_EQ(*result.outputURL, m_in / "a.webp");
}

TEST_F(Optimizer, MovesTheOriginalToTheTrashOnlyWhenAsked)
{
    const auto source = photo("a.png");
    optimize(source);
    EXPECT_TRUE(std::filesystem::exists(source));
    optimize(source, {.moveOriginalToTrash = true});
    EXPECT_FALSE(std::filesystem::exists(source));
    EXPECT_TRUE(std::filesystem::exists(m_trash / "a.png"));
}

TEST_F(Optimizer, SucceedsWithAWarningWhenTheTrashFails)
{
    m_services.moveToTrash = [](const std::filesystem::path&) -> Status { return Error{"no trash here"}; };
    const auto source = photo("a.png");
    installWriting(webpOfSize(64, 48, 9'000'000));
    const auto grown = optimize(source, {.moveOriginalToTrash = true});
    EXPECT_TRUE(grown.isSuccess);
    EXPECT_EQ(grown.message, "Converted. Original could not be moved to Trash");
    EXPECT_TRUE(std::filesystem::exists(source));

    installWriting(webpOfSize(64, 48, 500));
    EXPECT_THAT(optimize(source, {.moveOriginalToTrash = true}).message,
                testing::MatchesRegex("Saved .*\\. Original could not be moved to Trash"));
}
TEST_F(Optimizer, FailsEveryFileWithoutTheSelectedFolder)
{
    const auto source = photo("a.png");
    EXPECT_EQ(failureOf(source, {.destinationMode = DestinationMode::selectedFolder}),
              "The selected destination folder is no longer available.");
    EXPECT_EQ(filesIn(m_in), 1U);
}

TEST_F(Optimizer, SaysThatAnOutputCannotBeCreatedInAMissingFolder)
{
    const auto source = photo("a.png");
    EXPECT_EQ(failureOf(source, {.outputFormat = OutputFormat::jpeg,
                                 .destinationMode = DestinationMode::selectedFolder,
                                 .destinationFolderURL = m_folder / "gone"}),
              "Could not create a.jpg.");
}

TEST_F(Optimizer, CannotKeepAWebPAsWebP)
{
    const auto source = photo("a.webp");
    EXPECT_EQ(failureOf(source, {.outputFormat = OutputFormat::original}),
              "Original Format is not supported by this macOS ImageIO installation.");
}

TEST_F(Optimizer, GoesByTheContentAndNotByTheName)
{
    test::save(m_in / "a.png", test::corneredPicture(16, 12));
    std::filesystem::rename(m_in / "a.png", m_in / "a.jpg");
    const auto result = optimize(m_in / "a.jpg", {.outputFormat = OutputFormat::original});
    EXPECT_EQ(result.outputURL->filename(), "a.png");
    EXPECT_THAT(test::readBytes(*result.outputURL), StartsWith("\x89PNG"));
}

TEST_F(Optimizer, CarriesTheModificationTimeOver)
{
    const auto source = photo("a.png");
    const auto date = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1000);
    std::filesystem::last_write_time(source, date);
    const auto kept = optimize(source);
    EXPECT_EQ(std::filesystem::last_write_time(*kept.outputURL), std::filesystem::last_write_time(source));
    const auto fresh = optimize(source, {.filenamePrefix = "f", .preserveModificationTime = false});
    EXPECT_GT(std::filesystem::last_write_time(*fresh.outputURL), std::filesystem::last_write_time(source));
}

TEST_F(Optimizer, UsesTheFirstOfManyPagesAndFrames)
{
    test::Pixels pages = test::uniformPicture(8, 12, {250, 0, 0});
    for (std::size_t i = pages.bytes.size() / 2; i < pages.bytes.size(); i += 3)
        std::swap(pages.bytes[i], pages.bytes[i + 2]);
    for (const char* name : {"a.tif", "a.webp", "a.gif"}) {
        test::save(m_in / name, pages, {.pageHeight = 6});
        const auto result = optimize(m_in / name, {.outputFormat = OutputFormat::png});
        const test::Pixels output = test::load(*result.outputURL);
        EXPECT_EQ(output.height, 6) << name;
        EXPECT_THAT(output.at(4, 4), testing::ElementsAre(250, 0, 0)) << name;
    }
}

TEST_F(Optimizer, UsesTheFirstFrameOfAnAnimation)
{
    // Two frames of a GIF by hand: one red pixel, then one blue pixel.
    const std::string gif(
        "GIF89a\x01\x00\x01\x00\x81\x00\x00\xFF\x00\x00\x00\x00\xFF\x00\x00\x00\x00\x00\x00"
        "!\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00"
        "!\xF9\x04\x00\x0A\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x44\x01\x00"
        "!\xF9\x04\x00\x0A\x00\x00\x00,\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02\x4C\x01\x00;",
        91);
    test::writeText(m_in / "a.gif", gif);
    const auto result = optimize(m_in / "a.gif", {.outputFormat = OutputFormat::png});
    const test::Pixels output = test::load(*result.outputURL);
    EXPECT_EQ(output.width, 1);
    EXPECT_EQ(output.height, 1);
    EXPECT_THAT(output.at(0, 0), testing::ElementsAre(255, 0, 0));
}
TEST_F(Optimizer, LeavesTheEncodersWordsOnAPictureTooLargeForWebP)
{
    test::save(m_in / "long.png", test::uniformPicture(16400, 2, {9, 9, 9}));
    const std::string failure = failureOf(m_in / "long.png", {.resizeMode = ResizeMode::none});
    EXPECT_THAT(failure, StartsWith("Could not finish writing long.webp: "));
    EXPECT_EQ(filesIn(m_temporary), 0U);
}

TEST_F(Optimizer, TakesNamesAsBytes)
{
    for (const std::string& name :
         {std::string("with space.png"), std::string("new\nline.png"), std::string("quote'\".png"),
          std::string("-dash.png"), std::string("\u00E9t\u00E9.png"), std::string("\xFF\xFE raw.png"),
          std::string(251, 'n') + ".png"}) {
        const auto result = optimize(photo(name));
        EXPECT_TRUE(std::filesystem::exists(*result.outputURL)) << name;
        EXPECT_EQ(result.outputURL->extension(), ".webp");
    }
}

// An average over many pixels tells whether the picture moved or changed its tone; the noise of the codecs

TEST_F(Optimizer, KeepsAnOriginalThatChangedMeanwhile)
{
    const auto source = photo("a.png");
    test::save(m_folder / "made.webp", test::load(source));
    installWriting(m_folder / "made.webp", "printf more >> '" + source.string() + "'");
    const auto result = optimize(source, {.resizeMode = ResizeMode::none, .moveOriginalToTrash = true});
    EXPECT_THAT(result.message, testing::EndsWith(". Original could not be moved to Trash"));
    EXPECT_TRUE(std::filesystem::exists(source));
}

TEST_F(Optimizer, GivesNothingUpForAnOutputThatDoesNotDecode)
{
    const auto source = photo("a.png");
    test::save(m_folder / "made.webp", test::load(source));
    std::string damaged = test::readBytes(m_folder / "made.webp");
    std::fill(damaged.begin() + 40, damaged.end(), '\0'); // whole by its length
    test::writeText(m_folder / "damaged.webp", damaged);
    installWriting(m_folder / "damaged.webp");
    EXPECT_EQ(failureOf(source, {.resizeMode = ResizeMode::none, .moveOriginalToTrash = true}),
              "Could not finish writing a.webp: the new file cannot be read");
    EXPECT_TRUE(std::filesystem::exists(source));
    EXPECT_EQ(filesIn(m_in), 1U);

    test::writeText(m_in / "a.webp", "an earlier output");
    EXPECT_EQ(failureOf(source, {.resizeMode = ResizeMode::none}),
              "Could not finish writing a.webp: the new file cannot be read");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "an earlier output");
}

} // namespace
} // namespace lumora
