// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A good picture that cannot be redrawn is written as it is; a damaged one never.
#include "tests/engine/optimizer_test.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class FailedRedraw : public test::OptimizerTest
{
protected:
    // Nothing can be converted from what this profile describes.
    std::filesystem::path inUnknownColours(const std::string& name)
    {
        test::save(m_in / name, m_pixels, {.emptyProfile = true});
        return m_in / name;
    }

    const test::Pixels m_pixels = test::corneredPicture(64, 48);
};

TEST_F(FailedRedraw, LeavesSizeColoursAndProfileAsTheyAre)
{
    const auto result = optimize(inUnknownColours("a.png"), {.maximumPixels = 10,
                                                             .outputFormat = OutputFormat::png,
                                                             .optimizeColorForSharing = true,
                                                             .removeColorManagement = false,
                                                             .filenameSuffix = "-out"});
    EXPECT_TRUE(result.isSuccess);
    EXPECT_EQ(test::load(*result.outputURL).bytes, m_pixels.bytes);
    EXPECT_TRUE(test::inspect(*result.outputURL).hasProfile);
}

TEST_F(FailedRedraw, StillLeavesTheProfileOutWhereThatIsAsked)
{
    const auto result = optimize(inUnknownColours("a.png"), {.outputFormat = OutputFormat::png,
                                                             .optimizeColorForSharing = false,
                                                             .removeColorManagement = true,
                                                             .filenameSuffix = "-out"});
    EXPECT_EQ(test::load(*result.outputURL).bytes, m_pixels.bytes);
    EXPECT_FALSE(test::inspect(*result.outputURL).hasProfile);
}

// Formats that hold no profile store nothing but drawings.
TEST_F(FailedRedraw, TakesColoursAsTheyAreWhereOnlyADrawingCanBeStored)
{
    const auto result = optimize(inUnknownColours("a.png"), {.outputFormat = OutputFormat::webpLossless,
                                                             .removeColorManagement = false});
    EXPECT_EQ(test::load(*result.outputURL).bytes, m_pixels.bytes);
}

TEST_F(FailedRedraw, OfADamagedPictureIsNoPicture)
{
    const auto file = inUnknownColours("a.png");
    std::filesystem::resize_file(file, std::filesystem::file_size(file) * 8 / 10);
    EXPECT_EQ(failureOf(file, {.outputFormat = OutputFormat::png}), "The image could not be read.");
}

} // namespace
} // namespace lumora
