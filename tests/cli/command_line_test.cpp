// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/command_line_parser.h"

#include <gtest/gtest.h>

namespace lumora::cli {

namespace {

using Arguments = std::vector<std::string>;

CommandLine accepted(const Arguments& arguments)
{
    const auto parsed = parseCommandLine(arguments);
    if (const auto* error = std::get_if<UsageError>(&parsed)) ADD_FAILURE() << error->message;
    return std::holds_alternative<CommandLine>(parsed) ? std::get<CommandLine>(parsed) : CommandLine{};
}

std::string complaint(const Arguments& arguments)
{
    const auto parsed = parseCommandLine(arguments);
    return std::holds_alternative<UsageError>(parsed) ? std::get<UsageError>(parsed).message : "accepted";
}

TEST(CommandLine, withoutOptionsHasTheDefaultsOfAFirstLaunch)
{
    const CommandLine line = accepted({"a.jpg"});
    const OptimizerSettings settings = line.settings();
    EXPECT_EQ(settings.resizeMode, ResizeMode::maxWidth);
    EXPECT_EQ(settings.maximumPixels, 2560);
    EXPECT_EQ(settings.outputFormat, OutputFormat::webp);
    EXPECT_EQ(settings.quality, 82);
    EXPECT_TRUE(settings.optimizeColorForSharing);
    EXPECT_TRUE(settings.removeColorManagement);
    EXPECT_TRUE(settings.removeMetadata);
    EXPECT_EQ(settings.destinationMode, DestinationMode::originalLocation);
    EXPECT_EQ(settings.destinationFolderURL, std::nullopt);
    EXPECT_EQ(settings.filenamePrefix, "");
    EXPECT_EQ(settings.filenameSuffix, "");
    EXPECT_FALSE(settings.moveOriginalToTrash);
    EXPECT_TRUE(settings.preserveModificationTime);
    EXPECT_FALSE(settings.warnBeforeOverwrite);
    EXPECT_TRUE(settings.trashReplaced);
    EXPECT_FALSE(settings.skipOptimized);
    EXPECT_FALSE(settings.onlySmaller);
    EXPECT_FALSE(settings.keepFolders);
    EXPECT_TRUE(line.keepHistory);
    EXPECT_FALSE(line.recordStats);
    EXPECT_EQ(line.jobs, std::nullopt);
}

TEST(CommandLine, everyOptionReachesTheSettings)
{
    const CommandLine line = accepted({"-f",
                                       "heic",
                                       "-q",
                                       "70.5",
                                       "--resize=longestEdge",
                                       "--max-pixels",
                                       "100",
                                       "--no-srgb",
                                       "--no-remove-profile",
                                       "--no-remove-metadata",
                                       "-o",
                                       "out",
                                       "--prefix",
                                       "small-",
                                       "--suffix=-2",
                                       "--trash-original",
                                       "--no-keep-time",
                                       "--existing",
                                       "skip",
                                       "a.jpg"});
    const OptimizerSettings settings = line.settings();
    EXPECT_EQ(settings.resizeMode, ResizeMode::longestEdge);
    EXPECT_EQ(settings.maximumPixels, 100);
    EXPECT_EQ(settings.outputFormat, OutputFormat::heic);
    EXPECT_EQ(settings.quality, 70.5);
    EXPECT_FALSE(settings.optimizeColorForSharing);
    EXPECT_FALSE(settings.removeColorManagement);
    EXPECT_FALSE(settings.removeMetadata);
    EXPECT_EQ(settings.destinationMode, DestinationMode::selectedFolder);
    EXPECT_EQ(settings.destinationFolderURL, "out");
    EXPECT_EQ(settings.filenamePrefix, "small-");
    EXPECT_EQ(settings.filenameSuffix, "-2");
    EXPECT_TRUE(settings.moveOriginalToTrash);
    EXPECT_FALSE(settings.preserveModificationTime);
    EXPECT_TRUE(settings.warnBeforeOverwrite);
    EXPECT_EQ(line.existing, Existing::skip);
}

TEST(CommandLine, switchesOfTheRunAreOffUntilNamed)
{
    const CommandLine line = accepted({"-n", "--json", "--quiet", "--record-stats", "-j3", "a.jpg"});
    EXPECT_TRUE(line.dryRun);
    EXPECT_TRUE(line.json);
    EXPECT_TRUE(line.quiet);
    EXPECT_TRUE(line.recordStats);
    EXPECT_EQ(line.jobs, 3);
}

TEST(CommandLine, theLastOfTwoContraryOptionsWins)
{
    EXPECT_TRUE(accepted({"--no-srgb", "--srgb", "a.jpg"}).sRGB);
    EXPECT_FALSE(accepted({"--srgb", "--no-srgb", "a.jpg"}).sRGB);
}

TEST(CommandLine, choicesHaveTheNamesThatPeopleType)
{
    EXPECT_EQ(accepted({"-f", "jpg", "a.jpg"}).format, OutputFormat::jpeg);
    EXPECT_EQ(accepted({"-f", "webp-lossless", "a.jpg"}).format, OutputFormat::webpLossless);
    EXPECT_EQ(accepted({"--resize=longest-edge", "a.jpg"}).resizeMode, ResizeMode::longestEdge);
}

TEST(CommandLine, everythingAfterTwoDashesIsAPath)
{
    using Paths = std::vector<std::filesystem::path>;
    EXPECT_EQ(accepted({"a.jpg", "--json", "--", "-b.jpg", "--quiet"}).paths,
              (Paths{"a.jpg", "-b.jpg", "--quiet"}));
}

TEST(CommandLine, longNamesMayBeCutAsLongAsOneFits)
{
    EXPECT_EQ(accepted({"--form", "jpeg", "a.jpg"}).format, OutputFormat::jpeg);
    EXPECT_FALSE(accepted({"--no-sr", "a.jpg"}).sRGB);
    EXPECT_EQ(complaint({"--remove", "a.jpg"}), "unknown option --remove");
}

TEST(CommandLine, lettersMayBeJoinedWithTheirValue)
{
    const CommandLine line = accepted({"-nfpng", "a.jpg", "-q70"});
    EXPECT_TRUE(line.dryRun);
    EXPECT_EQ(line.format, OutputFormat::png);
    EXPECT_EQ(line.quality, 70);
}

TEST(CommandLine, pathsInBracketsStayWhole)
{
    EXPECT_EQ(accepted({"[a,b].jpg"}).paths, std::vector<std::filesystem::path>{"[a,b].jpg"});
    EXPECT_EQ(accepted({"[a,b]"}).paths, std::vector<std::filesystem::path>{"[a,b]"});
}

TEST(CommandLine, pathsKeepTheirBytes)
{
    EXPECT_EQ(accepted({"caf\xe9 \n.jpg"}).paths.front().native(), "caf\xe9 \n.jpg");
}

TEST(CommandLine, helpAndVersionNeedNoPath)
{
    EXPECT_EQ(accepted({"--help"}).action, Action::showHelp);
    EXPECT_EQ(accepted({"--version"}).action, Action::showVersion);
    EXPECT_EQ(accepted({"--version", "--help"}).action, Action::showVersion);
    EXPECT_EQ(accepted({"--help", "--frobnicate"}).action, Action::showHelp);
}

struct WrongUsage
{
    Arguments arguments;
    const char* message;
};

void PrintTo(const WrongUsage& c, std::ostream* out)
{
    *out << c.message;
}

class CommandLineWrongUsage : public testing::TestWithParam<WrongUsage>
{
};

TEST_P(CommandLineWrongUsage, isNamedInOneSentence)
{
    EXPECT_EQ(complaint(GetParam().arguments), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CommandLineWrongUsage,
    testing::Values(
        WrongUsage{{}, "no files or folders given"},
        WrongUsage{{"-q", "0", "a.jpg"}, "--quality takes a number from 1 to 100, not '0'"},
        WrongUsage{{"-q", "100.5", "a.jpg"}, "--quality takes a number from 1 to 100, not '100.5'"},
        WrongUsage{{"-q", "nan", "a.jpg"}, "--quality takes a number from 1 to 100, not 'nan'"},
        WrongUsage{{"-q", "82%", "a.jpg"}, "--quality takes a number from 1 to 100, not '82%'"},
        WrongUsage{{"-q", "", "a.jpg"}, "--quality takes a number from 1 to 100, not ''"},
        WrongUsage{{"--max-pixels", "0", "a.jpg"}, "--max-pixels takes a number of at least 1, not '0'"},
        WrongUsage{{"--max-pixels", "-5", "a.jpg"}, "--max-pixels takes a number of at least 1, not '-5'"},
        WrongUsage{{"--max-pixels", "9223372036854775808", "a.jpg"},
                   "--max-pixels takes a number of at least 1, not '9223372036854775808'"},
        WrongUsage{{"--jobs", "0", "a.jpg"}, "--jobs takes a number of at least 1, not '0'"},
        WrongUsage{{"--jobs", "two", "a.jpg"}, "--jobs takes a number of at least 1, not 'two'"},
        WrongUsage{{"--prefix", "a/b", "a.jpg"}, "--prefix is part of a file name and cannot hold '/'"},
        WrongUsage{{"--suffix", "/", "a.jpg"}, "--suffix is part of a file name and cannot hold '/'"},
        WrongUsage{{"-o", "", "a.jpg"}, "--output-dir takes the name of a folder"},
        WrongUsage{{"-f", "tiff", "a.jpg"},
                   "--format takes one of webp, webpLossless, jpeg, png, heic, original, not 'tiff'"},
        WrongUsage{{"-f", "WEBP", "a.jpg"},
                   "--format takes one of webp, webpLossless, jpeg, png, heic, original, not 'WEBP'"},
        WrongUsage{{"--resize", "", "a.jpg"},
                   "--resize takes one of maxWidth, maxHeight, longestEdge, none, not ''"},
        WrongUsage{{"--existing=keep", "a.jpg"}, "--existing takes one of replace, ask, skip, not 'keep'"},
        WrongUsage{{"--frobnicate", "a.jpg"}, "unknown option --frobnicate"},
        WrongUsage{{"--frobnicate=3", "a.jpg"}, "unknown option --frobnicate"},
        WrongUsage{{"-z", "a.jpg"}, "unknown option -z"}, WrongUsage{{"a.jpg", "-q"}, "-q needs a value"},
        WrongUsage{{"a.jpg", "--quality"}, "--quality needs a value"},
        WrongUsage{{"--json=yes", "a.jpg"}, "--json takes no value"},
        WrongUsage{{"--no-srgb=1", "a.jpg"}, "--no-srgb takes no value"},
        WrongUsage{{"--no-json", "a.jpg"}, "unknown option --no-json"}));

TEST(CommandLine, theFirstWordMayBeACommand)
{
    EXPECT_EQ(accepted({"undo"}).action, Action::undo);
    EXPECT_EQ(accepted({"undo"}).batch, std::nullopt);
    EXPECT_EQ(accepted({"undo", "--json", "12", "-n"}).batch, 12);
    EXPECT_TRUE(accepted({"undo", "--dry-run"}).dryRun);
    EXPECT_EQ(accepted({"history", "--json"}).action, Action::showHistory);
    EXPECT_TRUE(accepted({"history", "--clear"}).clearHistory);
    EXPECT_EQ(accepted({"history", "--history-days=7"}).keepDays, 7);
    EXPECT_EQ(accepted({"undo", "--help"}).action, Action::showHelp);
    // Files of such names.
    EXPECT_EQ(accepted({"./undo"}).paths, (std::vector<std::filesystem::path>{"./undo"}));
    EXPECT_EQ(accepted({"a.jpg", "history"}).paths, (std::vector<std::filesystem::path>{"a.jpg", "history"}));
}

TEST(CommandLine, commandsRefuseWhatIsNotForThem)
{
    EXPECT_EQ(complaint({"undo", "x"}), "undo takes the number of a batch, not 'x'");
    EXPECT_EQ(complaint({"undo", "0"}), "undo takes the number of a batch, not '0'");
    EXPECT_EQ(complaint({"undo", "1", "2"}), "'2' is one argument too many");
    EXPECT_EQ(complaint({"history", "1"}), "'1' is one argument too many");
    EXPECT_EQ(complaint({"undo", "--format=jpeg"}), "--format does not go with the command undo");
    EXPECT_EQ(complaint({"history", "--dry-run"}), "--dry-run does not go with the command history");
    EXPECT_EQ(complaint({"--clear", "a.jpg"}), "--clear goes with the command history only");
}

} // namespace
} // namespace lumora::cli
