// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/optimizer_settings.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace lumora {
namespace {

OptimizerSettings settingsWith(OutputFormat format, double quality)
{
    return {ResizeMode::longestEdge,         1234,         format, quality, true,  false, true,
            DestinationMode::selectedFolder, std::nullopt, "pre",  "suf",   false, true,  false};
}

struct QualityCase
{
    double quality;
    double normalized;
};

void PrintTo(const QualityCase& c, std::ostream* out)
{
    *out << c.quality;
}

class NormalizedQuality : public testing::TestWithParam<QualityCase>
{
};

TEST_P(NormalizedQuality, IsClampedAndDividedByAHundred)
{
    const OptimizerSettings settings = settingsWith(OutputFormat::jpeg, GetParam().quality);
    EXPECT_DOUBLE_EQ(settings.normalizedQuality(), GetParam().normalized);
    EXPECT_DOUBLE_EQ(normalizedQuality(GetParam().quality), GetParam().normalized);
}

INSTANTIATE_TEST_SUITE_P(Qualities, NormalizedQuality,
                         testing::Values(QualityCase{82, 0.82}, QualityCase{82.5, 0.825},
                                         QualityCase{100, 1.0}, QualityCase{150, 1.0}, QualityCase{1, 0.01},
                                         QualityCase{0.5, 0.01}, QualityCase{0, 0.01}, QualityCase{-20, 0.01},
                                         QualityCase{std::numeric_limits<double>::infinity(), 1.0},
                                         QualityCase{-std::numeric_limits<double>::infinity(), 0.01}));

TEST(NormalizedQualityOfNoNumber, IsTheHighest)
{
    const double noNumber = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(settingsWith(OutputFormat::jpeg, noNumber).normalizedQuality(), 1.0);
    EXPECT_EQ(settingsWith(OutputFormat::jpeg, -noNumber).normalizedQuality(), 1.0);
}

TEST(OptimizerSettings, CompressLossilyExceptForTheLosslessFormats)
{
    for (const OutputFormat format : allCases<OutputFormat>) {
        const bool expected = format != OutputFormat::webpLossless && format != OutputFormat::png;
        EXPECT_EQ(settingsWith(format, 82).usesLossyCompression(), expected) << title(format);
        EXPECT_EQ(usesLossyCompression(format), expected) << title(format);
    }
}

TEST(OptimizerSettings, KeepEveryFieldAsGiven)
{
    const OptimizerSettings settings{ResizeMode::maxHeight,
                                     -7,
                                     OutputFormat::heic,
                                     1000.5,
                                     false,
                                     true,
                                     false,
                                     DestinationMode::selectedFolder,
                                     std::filesystem::path("/out \xFF"),
                                     "pre/",
                                     "",
                                     true,
                                     false,
                                     true};
    EXPECT_EQ(settings.resizeMode, ResizeMode::maxHeight);
    EXPECT_EQ(settings.maximumPixels, -7);
    EXPECT_EQ(settings.outputFormat, OutputFormat::heic);
    EXPECT_EQ(settings.quality, 1000.5);
    EXPECT_FALSE(settings.optimizeColorForSharing);
    EXPECT_TRUE(settings.removeColorManagement);
    EXPECT_FALSE(settings.removeMetadata);
    EXPECT_EQ(settings.destinationMode, DestinationMode::selectedFolder);
    EXPECT_EQ(settings.destinationFolderURL, std::filesystem::path("/out \xFF"));
    EXPECT_EQ(settings.filenamePrefix, "pre/");
    EXPECT_EQ(settings.filenameSuffix, "");
    EXPECT_TRUE(settings.moveOriginalToTrash);
    EXPECT_FALSE(settings.preserveModificationTime);
    EXPECT_TRUE(settings.warnBeforeOverwrite);
}

TEST(OptimizerSettings, MayNameASelectedFolderWithoutHavingOne)
{
    const OptimizerSettings settings = settingsWith(OutputFormat::webp, 82);
    EXPECT_EQ(settings.destinationMode, DestinationMode::selectedFolder);
    EXPECT_FALSE(settings.destinationFolderURL);
}

TEST(OptimizerSettings, AreCopiedButNeverChanged)
{
    EXPECT_TRUE(std::is_copy_constructible_v<OptimizerSettings>);
    EXPECT_FALSE(std::is_copy_assignable_v<OptimizerSettings>);
    EXPECT_FALSE(std::is_default_constructible_v<OptimizerSettings>);
}

} // namespace
} // namespace lumora
