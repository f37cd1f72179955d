// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The picture in the output: upright, of the right size, depth and colours.
#include "tests/engine/optimizer_test.h"
#include "tests/support/program_output.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using OutputPicture = test::OptimizerTest;

TEST_F(OutputPicture, TurnsEveryOrientationUprightInEveryFormat)
{
    const test::Pixels upright = test::corneredPicture(64, 48);
    for (const OutputFormat format : {OutputFormat::webpLossless, OutputFormat::jpeg, OutputFormat::png,
                                      OutputFormat::heic, OutputFormat::original}) {
        for (int orientation = 1; orientation <= 8; ++orientation) {
            const auto source =
                photo("o" + std::to_string(orientation) + ".jpg", {.orientation = orientation});
            for (const bool isRedrawn : {true, false}) {
                const auto result = optimize(source, {.outputFormat = format,
                                                      .quality = 95,
                                                      .optimizeColorForSharing = isRedrawn,
                                                      .removeColorManagement = isRedrawn,
                                                      .removeMetadata = false});
                const test::Pixels output = test::load(*result.outputURL);
                EXPECT_EQ(test::inspect(*result.outputURL).orientation, 1);
                EXPECT_EQ(output.width, orientation >= 5 ? 48 : 64) << orientation << rawValue(format);
                // The stored picture's red corner lies at the top left; where the turn brings it is known.
                constexpr std::array<std::array<int, 2>, 8> redCorner{
                    {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}}};
                constexpr std::array<std::array<int, 2>, 8> greenCorner{
                    {{1, 0}, {0, 0}, {0, 1}, {1, 1}, {0, 1}, {1, 1}, {1, 0}, {0, 0}}};
                const auto colorAt = [&](std::array<int, 2> corner) {
                    return output.at(corner[0] ? output.width - 5 : 4, corner[1] ? output.height - 5 : 4);
                };
                const auto red = colorAt(redCorner.at(static_cast<std::size_t>(orientation - 1)));
                const auto green = colorAt(greenCorner.at(static_cast<std::size_t>(orientation - 1)));
                EXPECT_TRUE(red[0] > 180 && red[1] < 90) << orientation << rawValue(format) << isRedrawn;
                EXPECT_TRUE(green[1] > 160 && green[0] < 100) << orientation << rawValue(format) << isRedrawn;
            }
        }
    }
}

TEST_F(OutputPicture, KeepsDepthAndModelOfAPictureThatIsNotRedrawn)
{
    const test::SettingsDraft untouched{.resizeMode = ResizeMode::none,
                                        .outputFormat = OutputFormat::original,
                                        .optimizeColorForSharing = false,
                                        .removeColorManagement = false};
    const auto deep = optimize(photo("deep.png", {.sixteenBits = true}), untouched);
    EXPECT_EQ(test::inspect(*deep.outputURL).bits, 16);
    test::save(m_in / "gray.png", test::uniformPicture(9, 9, {77}));
    EXPECT_EQ(test::inspect(*optimize(m_in / "gray.png", untouched).outputURL).bands, 1);
    test::save(m_in / "ink.jpg", test::uniformPicture(16, 16, {0, 255, 255, 0}), {.inkToCmyk = true});
    EXPECT_EQ(test::inspect(*optimize(m_in / "ink.jpg", untouched).outputURL).bands, 4);
}

TEST_F(OutputPicture, BringsARedrawnDeepPictureToEightBits)
{
    const auto result =
        optimize(photo("deep.png", {.sixteenBits = true}), {.outputFormat = OutputFormat::png});
    EXPECT_EQ(test::inspect(*result.outputURL).bits, 8);
}

TEST_F(OutputPicture, TurnsInkIntoTheColoursOfTheScreen)
{
    test::save(m_in / "ink.jpg", test::uniformPicture(16, 16, {0, 255, 255, 0}), {.inkToCmyk = true});
    for (const OutputFormat format : {OutputFormat::jpeg, OutputFormat::png, OutputFormat::webpLossless}) {
        const auto color =
            test::load(*optimize(m_in / "ink.jpg", {.outputFormat = format}).outputURL).at(8, 8);
        EXPECT_GT(color[0], 180) << rawValue(format);
        EXPECT_LT(color[1], 90) << rawValue(format);
        EXPECT_LT(color[2], 90) << rawValue(format);
    }
}

TEST_F(OutputPicture, ConvertsAWideGamutAndTagsOnlyWhatItShould)
{
    test::save(m_in / "p3.png", test::uniformPicture(16, 16, {200, 100, 100}), {.profile = "p3"});
    const auto output = [&](bool sharing, bool strip) {
        return *optimize(m_in / "p3.png", {.outputFormat = OutputFormat::png,
                                           .optimizeColorForSharing = sharing,
                                           .removeColorManagement = strip,
                                           .filenamePrefix = std::to_string(sharing) + std::to_string(strip)})
                    .outputURL;
    };
    const auto expectConverted = [](const std::filesystem::path& file) {
        const auto color = test::load(file).at(3, 3);
        EXPECT_GT(color[0], 205); // the same red needs more of a narrower primary
        EXPECT_LT(color[1], 100);
    };
    expectConverted(output(true, true));
    EXPECT_FALSE(test::inspect(output(true, true)).hasProfile);
    expectConverted(output(false, true));
    EXPECT_FALSE(test::inspect(output(false, true)).hasProfile);
    expectConverted(output(true, false));
    EXPECT_TRUE(test::inspect(output(true, false)).hasProfile);
    EXPECT_TRUE(test::inspect(output(false, false)).hasProfile);
    EXPECT_THAT(test::load(output(false, false)).at(3, 3), testing::ElementsAre(200, 100, 100));
}

TEST_F(OutputPicture, TellsNothingOfWhenItsProfileWasMade)
{
    test::save(m_in / "p3.png", test::uniformPicture(16, 16, {200, 100, 100}), {.profile = "p3"});
    const auto result =
        optimize(m_in / "p3.png", {.outputFormat = OutputFormat::png, .removeColorManagement = false});
    EXPECT_EQ(test::tagOf(*result.outputURL, "ICC_Profile:ProfileDateTime"), "2000:01:01 00:00:00\n");
}

TEST_F(OutputPicture, KeepsTheOwnColoursOfAPictureThatIsOnlyReduced)
{
    test::save(m_in / "p3.png", test::uniformPicture(64, 64, {200, 100, 100}), {.profile = "p3"});
    const auto result = optimize(m_in / "p3.png", {.maximumPixels = 16,
                                                   .outputFormat = OutputFormat::png,
                                                   .optimizeColorForSharing = false,
                                                   .removeColorManagement = false});
    EXPECT_TRUE(test::inspect(*result.outputURL).hasProfile);
    EXPECT_THAT(test::load(*result.outputURL).at(3, 3), testing::ElementsAre(200, 100, 100));
}

TEST_F(OutputPicture, NeverPutsAGrayProfileOnColouredPixels)
{
    test::save(m_in / "gray.png", test::uniformPicture(16, 16, {77}), {.grayProfile = true});
    const auto result = optimize(m_in / "gray.png", {.resizeMode = ResizeMode::none,
                                                     .outputFormat = OutputFormat::heic,
                                                     .optimizeColorForSharing = false,
                                                     .removeColorManagement = false});
    const std::string file = test::readBytes(*result.outputURL);
    EXPECT_EQ(file.find("GRAYXYZ "), std::string::npos);
}

TEST_F(OutputPicture, LaysTransparencyOverWhiteInJpegAndOverBlackInWebP)
{
    test::save(m_in / "a.png", test::uniformPicture(16, 16, {200, 40, 40, 0}));
    const auto jpeg = test::load(*optimize(m_in / "a.png", {.outputFormat = OutputFormat::jpeg}).outputURL);
    for (const int component : jpeg.at(8, 8))
        EXPECT_GE(component, 253);
    const auto webp =
        test::load(*optimize(m_in / "a.png", {.outputFormat = OutputFormat::webpLossless}).outputURL);
    EXPECT_THAT(webp.at(8, 8), testing::ElementsAre(0, 0, 0));
}

TEST_F(OutputPicture, KeepsTransparencyInPng)
{
    test::save(m_in / "a.png", test::uniformPicture(16, 16, {200, 40, 40, 128}));
    const auto png = test::load(
        *optimize(m_in / "a.png", {.maximumPixels = 8, .outputFormat = OutputFormat::png}).outputURL);
    const auto color = png.at(4, 4);
    ASSERT_EQ(color.size(), 4U);
    EXPECT_EQ(color[3], 128);
    EXPECT_NEAR(color[0], 200, 1);
}

// An average over many pixels tells whether the picture moved or changed its tone; the noise of the codecs
// does not.
TEST_F(OutputPicture, ReducesWithoutShiftingOrChangingTheTone)
{
    test::save(m_in / "a.png", test::corneredPicture(640, 480));
    const auto result = optimize(m_in / "a.png", {.maximumPixels = 100, .outputFormat = OutputFormat::png});
    const test::Pixels small = test::load(*result.outputURL);
    const test::Pixels large = test::corneredPicture(640, 480);
    for (const auto& [x, y] : {std::pair{20, 20}, {80, 20}, {20, 60}, {80, 60}}) {
        for (std::size_t c = 0; c < 3; ++c) {
            double sum = 0;
            for (int v = -8; v < 8; ++v) {
                for (int u = -8; u < 8; ++u)
                    sum += large.at(x * 64 / 10 + u, y * 64 / 10 + v).at(c);
            }
            EXPECT_NEAR(small.at(x, y).at(c), sum / 256, 5.0);
        }
    }
}

} // namespace
} // namespace lumora
