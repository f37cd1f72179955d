// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/errors.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using Error = ImageOptimizerError;

struct Case
{
    const char* name;
    Error error;
    Error::Kind kind;
    std::string_view text;
};

void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.name;
}

class ImageOptimizerErrorText : public testing::TestWithParam<Case>
{
};

TEST_P(ImageOptimizerErrorText, IsTheTextOfTheRow)
{
    EXPECT_EQ(GetParam().error.kind(), GetParam().kind);
    EXPECT_EQ(GetParam().error.errorDescription(), GetParam().text);
    EXPECT_EQ(GetParam().error.what(), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    , ImageOptimizerErrorText,
    testing::Values(
        Case{"UnsupportedFormat", Error::unsupportedFormat("WebP Lossy"), Error::Kind::unsupportedFormat,
             "WebP Lossy is not supported by this macOS ImageIO installation."},
        Case{"UnsupportedFormatKeepsASentence",
             Error::unsupportedFormat("WebP support is not bundled in this build."),
             Error::Kind::unsupportedFormat,
             "WebP support is not bundled in this build. is not supported by this macOS ImageIO "
             "installation."},
        Case{"CannotCreateDestination", Error::cannotCreateDestination("/out/a.png"),
             Error::Kind::cannotCreateDestination, "Could not create a.png."},
        Case{"CannotFinalizeWithAReason", Error::cannotFinalize("/out/a.webp", "No space left on device"),
             Error::Kind::cannotFinalize, "Could not finish writing a.webp: No space left on device"},
        Case{"CannotFinalizeWithoutAReason", Error::cannotFinalize("/out/a.webp"),
             Error::Kind::cannotFinalize, "Could not finish writing a.webp."},
        Case{"CannotFinalizeWithAnEmptyReason", Error::cannotFinalize("/out/a.webp", ""),
             Error::Kind::cannotFinalize, "Could not finish writing a.webp."},
        Case{"CannotWriteOutput", Error::cannotWriteOutput("/out/a.webp", "Permission denied"),
             Error::Kind::cannotWriteOutput, "Could not save a.webp: Permission denied"},
        Case{"CannotWriteOutputWithAnEmptyReason", Error::cannotWriteOutput("/out/a.webp", ""),
             Error::Kind::cannotWriteOutput, "Could not save a.webp: "},
        Case{"UnreadableImage", Error::unreadableImage(), Error::Kind::unreadableImage,
             "The image could not be read."},
        Case{"OverwriteDeclined", Error::overwriteDeclined(), Error::Kind::overwriteDeclined,
             "Skipped because the output file already exists."},
        Case{"MissingDestinationFolder", Error::missingDestinationFolder(),
             Error::Kind::missingDestinationFolder,
             "The selected destination folder is no longer available."},
        Case{"NamesArePrintedWithoutEscapes", Error::cannotCreateDestination("/my folder/caf\u00E9 100%.png"),
             Error::Kind::cannotCreateDestination, "Could not create caf\u00E9 100%.png."},
        Case{"NamesKeepTheirBytes", Error::cannotWriteOutput("/out/\xFF.webp", "x"),
             Error::Kind::cannotWriteOutput, "Could not save \xFF.webp: x"}),
    [](const auto& test) { return test.param.name; });

TEST(PlatformError, PassesItsTextThrough)
{
    EXPECT_STREQ(PlatformError("a.png could not be removed: Permission denied").what(),
                 "a.png could not be removed: Permission denied");
}

} // namespace
} // namespace lumora
