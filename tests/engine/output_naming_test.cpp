// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output_naming.h"

#include "records/errors.h"
#include "tests/support/settings.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using ImageOptimizer::outputExtension;
using ImageOptimizer::outputURL;
using ImageOptimizer::outputUTI;
using test::settings;
using test::SettingsDraft;

const std::optional<std::string> jpeg = "public.jpeg";
const std::optional<std::string> png = "public.png";
const std::vector<std::string> everything{"public.jpeg", "public.png", "public.heic", "public.tiff"};

struct NamingCase
{
    const char* name;
    const char* source;
    std::optional<std::string> sourceType;
    SettingsDraft draft;
    const char* output;
};

void PrintTo(const NamingCase& c, std::ostream* out)
{
    *out << c.name;
}

class OutputName : public testing::TestWithParam<NamingCase>
{
};

TEST_P(OutputName, IsBuiltFromPrefixBaseSuffixAndExtension)
{
    const NamingCase& c = GetParam();
    EXPECT_EQ(outputURL(c.source, c.sourceType, settings(c.draft)).native(), c.output);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, OutputName,
    testing::Values(
        NamingCase{
            "PngOntoItself", "/in/a.png", png, {.outputFormat = OutputFormat::png}, "/in/a-optimized.png"},
        NamingCase{
            "OtherFormatKeepsItsName", "/in/a.png", png, {.outputFormat = OutputFormat::jpeg}, "/in/a.jpg"},
        NamingCase{"PrefixAvoidsTheCollision",
                   "/in/a.png",
                   png,
                   {.outputFormat = OutputFormat::png, .filenamePrefix = "small-"},
                   "/in/small-a.png"},
        NamingCase{"PrefixThatBeginsWithASlashStaysInTheFolder",
                   "/in/a.png",
                   png,
                   {.outputFormat = OutputFormat::webp, .filenamePrefix = "/etc/"},
                   "/in//etc/a.webp"},
        NamingCase{"FileInTheTopFolder", "/a.png", png, {.outputFormat = OutputFormat::webp}, "/a.webp"},
        NamingCase{"SuffixStandsBeforeTheDot",
                   "/in/a.png",
                   png,
                   {.outputFormat = OutputFormat::webp, .filenameSuffix = "@web"},
                   "/in/a@web.webp"},
        NamingCase{"SelectedFolder",
                   "/in/a.png",
                   png,
                   {.outputFormat = OutputFormat::png,
                    .destinationMode = DestinationMode::selectedFolder,
                    .destinationFolderURL = "/out"},
                   "/out/a.png"},
        NamingCase{"SelectedFolderThatIsTheInputsOwn",
                   "/in/a.png",
                   png,
                   {.outputFormat = OutputFormat::png,
                    .destinationMode = DestinationMode::selectedFolder,
                    .destinationFolderURL = "/in/sub/.."},
                   "/in/sub/../a-optimized.png"},
        NamingCase{"OnlyTheLastExtensionGoes",
                   "/in/photo.tar.png",
                   png,
                   {.outputFormat = OutputFormat::webp},
                   "/in/photo.tar.webp"},
        NamingCase{"OriginalTakesTheTypesExtension",
                   "/in/photo.final.JPG",
                   jpeg,
                   {.outputFormat = OutputFormat::original},
                   "/in/photo.final.jpeg"},
        NamingCase{"OriginalOntoItself",
                   "/in/a.jpeg",
                   jpeg,
                   {.outputFormat = OutputFormat::original},
                   "/in/a-optimized.jpeg"},
        NamingCase{"OriginalOfUnknownTypeKeepsItsExtension",
                   "/in/a.xyz",
                   "org.example.unknown",
                   {.outputFormat = OutputFormat::original, .filenamePrefix = "p"},
                   "/in/pa.xyz"},
        NamingCase{"OriginalWithoutTypeAndExtension",
                   "/in/scan",
                   std::nullopt,
                   {.outputFormat = OutputFormat::original},
                   "/in/scan.png"},
        NamingCase{
            "CaseDiffersSoNoCollision", "/in/a.PNG", png, {.outputFormat = OutputFormat::png}, "/in/a.png"},
        NamingCase{"BytesThatAreNotText",
                   "/in/\xFF\xFE.png",
                   png,
                   {.outputFormat = OutputFormat::webp},
                   "/in/\xFF\xFE.webp"}),
    [](const auto& instance) { return instance.param.name; });

TEST(OutputURL, FailsWithoutTheSelectedFolder)
{
    try {
        outputURL("/in/a.png", png, settings({.destinationMode = DestinationMode::selectedFolder}));
        FAIL();
    } catch (const ImageOptimizerError& error) {
        EXPECT_EQ(error.kind(), ImageOptimizerError::Kind::missingDestinationFolder);
        EXPECT_STREQ(error.what(), "The selected destination folder is no longer available.");
    }
}

TEST(OutputURL, CutsANameThatNoFolderCouldHoldAndKeepsTwoOfThemApart)
{
    const std::string stem(250, 'x');
    const auto one = outputURL("/in/" + stem + "1.jpg", jpeg, settings());
    const auto other = outputURL("/in/" + stem + "2.jpg", jpeg, settings());
    EXPECT_EQ(one.filename().native().size(), 255U);
    EXPECT_EQ(one.extension(), ".webp");
    EXPECT_NE(one, other);
}

TEST(OutputURL, DoesNotCutInsideALetter)
{
    std::string stem;
    while (stem.size() < 252)
        stem += "\u00E9";
    const std::string name = outputURL("/in/" + stem + ".jpg", jpeg, settings()).filename().native();
    const std::size_t digest = name.find('~');
    ASSERT_NE(digest, std::string::npos);
    EXPECT_EQ(digest % 2, 0U);
}

TEST(OutputUTI, OfUnknownSourceIsPng)
{
    const auto s = settings({.outputFormat = OutputFormat::original});
    EXPECT_EQ(outputUTI(std::nullopt, s, everything), "public.png");
    EXPECT_EQ(outputExtension("/in/scan", std::nullopt, s), "png");
}

TEST(OutputUTI, NamesTheFormatWhenItsTypeCannotBeWritten)
{
    const std::vector<std::string> noHeic{"public.jpeg", "public.png"};
    try {
        outputUTI(jpeg, settings({.outputFormat = OutputFormat::heic}), noHeic);
        FAIL();
    } catch (const ImageOptimizerError& error) {
        EXPECT_EQ(error.kind(), ImageOptimizerError::Kind::unsupportedFormat);
        EXPECT_STREQ(error.what(), "HEIC is not supported by this macOS ImageIO installation.");
    }
}

TEST(OutputUTI, OfAnOriginalThatCannotBeWrittenNamesTheFormatsTitle)
{
    try {
        outputUTI("org.webmproject.webp", settings({.outputFormat = OutputFormat::original}), everything);
        FAIL();
    } catch (const ImageOptimizerError& error) {
        EXPECT_STREQ(error.what(), "Original Format is not supported by this macOS ImageIO installation.");
    }
}

} // namespace
} // namespace lumora
