// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_optimizer.h"

#include "platform/image_source.h"
#include "records/errors.h"
#include "tests/support/fake_encoder.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <cmath>

namespace lumora {
namespace {

using test::settings;
using test::SettingsDraft;
using testing::StartsWith;

class Optimizer : public test::EncoderTest
{
protected:
    Optimizer()
    {
        installReal();
        m_services = OptimizerServices::system();
        m_services.bundleURL = m_bundle;
        m_services.moveToTrash = [this](const std::filesystem::path& url) -> Status {
            std::filesystem::rename(url, m_trash / url.filename());
            return Done{};
        };
        m_services.confirmOverwrite = [this](const std::filesystem::path& url) {
            m_asked.push_back(url.filename());
            return m_answer;
        };
        std::filesystem::create_directories(m_trash);
        std::filesystem::create_directories(m_in);
    }

    ProcessingResult optimize(const std::filesystem::path& file, const SettingsDraft& draft = {})
    {
        return ImageOptimizer::optimize(file, settings(draft), m_services);
    }

    std::string failureOf(const std::filesystem::path& file, const SettingsDraft& draft = {})
    {
        try {
            optimize(file, draft);
        } catch (const std::exception& error) {
            return error.what();
        }
        return "no failure";
    }

    std::filesystem::path photo(const std::string& name, const test::SaveOptions& options = {})
    {
        test::save(m_in / name, test::corneredPicture(64, 48), options);
        return m_in / name;
    }

    std::size_t filesIn(const std::filesystem::path& folder) const
    {
        return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
    }

    std::filesystem::path m_in = m_folder / "in";
    std::filesystem::path m_trash = m_folder / "trash";
    std::vector<std::filesystem::path> m_asked;
    bool m_answer = true;
    OptimizerServices m_services;
};

TEST_F(Optimizer, TurnsEveryOrientationUprightInEveryFormat)
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

TEST_F(Optimizer, KeepsAnOutputThatGrewAndSaysConverted)
{
    test::save(m_in / "tiny.gif", test::uniformPicture(2, 2, {10, 20, 30}));
    const auto result = optimize(m_in / "tiny.gif", {.outputFormat = OutputFormat::jpeg});
    EXPECT_TRUE(result.isSuccess);
    EXPECT_GT(result.outputBytes, result.originalBytes);
    EXPECT_EQ(result.message, "Converted");
    EXPECT_TRUE(std::filesystem::exists(*result.outputURL));
}

TEST_F(Optimizer, SaysConvertedForEqualSizes)
{
    const auto source = photo("a.png");
    const auto size = std::filesystem::file_size(source);
    installBundled("while [ \"$1\" != -o ]; do shift; done; head -c " + std::to_string(size) +
                   " /dev/zero > \"$2\"");
    const auto result = optimize(source);
    EXPECT_EQ(result.outputBytes, result.originalBytes);
    EXPECT_EQ(result.message, "Converted");
}

TEST_F(Optimizer, SaysWhatItSaved)
{
    const auto source = photo("a.png");
    installBundled("while [ \"$1\" != -o ]; do shift; done; head -c 100 /dev/zero > \"$2\"");
    test::writeText(m_in / "pad", "");
    std::filesystem::resize_file(source, 1'300'100); // data behind the picture's end is no damage
    const auto result = optimize(source);
    EXPECT_EQ(result.message, "Saved 1.3 MB");
    EXPECT_EQ(result.originalBytes, 1'300'100);
    EXPECT_EQ(result.outputBytes, 100);
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
    installBundled("while [ \"$1\" != -o ]; do shift; done; head -c 9000000 /dev/zero > \"$2\"");
    const auto grown = optimize(source, {.moveOriginalToTrash = true});
    EXPECT_TRUE(grown.isSuccess);
    EXPECT_EQ(grown.message, "Converted. Original could not be moved to Trash");
    EXPECT_TRUE(std::filesystem::exists(source));

    installBundled("while [ \"$1\" != -o ]; do shift; done; printf x > \"$2\"");
    EXPECT_THAT(optimize(source, {.moveOriginalToTrash = true}).message,
                testing::MatchesRegex("Saved .*\\. Original could not be moved to Trash"));
}

struct Unreadable
{
    const char* name;
    std::string bytes;
};

class UnreadableFile : public Optimizer, public testing::WithParamInterface<Unreadable>
{
};

TEST_P(UnreadableFile, FailsAndTouchesNothing)
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
    Cases, UnreadableFile,
    testing::Values(
        Unreadable{"Empty", ""}, Unreadable{"Text", "This is no picture at all, only words in a row."},
        Unreadable{"Pdf", "%PDF-1.4\n1 0 obj << /Type /Catalog >> endobj"},
        Unreadable{"Svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'><rect/></svg>"},
        Unreadable{"Exr", std::string("v/1\x01\x02\0\0\0channels\0chlist\0", 24)},
        Unreadable{"Script", "#!/bin/sh\nrm -rf everything\n"},
        Unreadable{"PortablePixmap", "P6\n1 1\n255\nabc"}, Unreadable{"OnlyAJpegMark", "\xFF\xD8\xFF"},
        Unreadable{"OnlyAPngMark", "\x89PNG\r\n\x1A\n"}, Unreadable{"OnlyABmpMark", "BM"}),
    [](const auto& instance) { return instance.param.name; });

TEST_F(Optimizer, TreatsMissingFilesAndFoldersAsUnreadable)
{
    EXPECT_EQ(failureOf(m_in / "missing.png"), "The image could not be read.");
    std::filesystem::create_directories(m_in / "album.jpg");
    EXPECT_EQ(failureOf(m_in / "album.jpg"), "The image could not be read.");
    ASSERT_EQ(mkfifo((m_in / "pipe.png").c_str(), 0600), 0);
    EXPECT_EQ(failureOf(m_in / "pipe.png"), "The image could not be read.");
}

TEST_F(Optimizer, FailsTruncatedFilesOfEveryFormatBeforeTouchingAnEarlierOutput)
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

TEST_F(Optimizer, FindsDamageBelowTheRowsThatAReducedPictureNeeds)
{
    test::save(m_in / "a.png", test::corneredPicture(600, 400));
    std::filesystem::resize_file(m_in / "a.png", std::filesystem::file_size(m_in / "a.png") - 60);
    EXPECT_EQ(failureOf(m_in / "a.png", {.maximumPixels = 10}), "The image could not be read.");
}

TEST_F(Optimizer, RefusesPicturesAboveThreeHundredMegapixels)
{
    test::writeText(m_in / "huge.png", test::pngClaiming(60000, 60000));
    EXPECT_EQ(failureOf(m_in / "huge.png", {.maximumPixels = 100}), "The image could not be read.");
    const auto source = ImageSource::open(m_in / "huge.png");
    ASSERT_FALSE(source);
    EXPECT_EQ(source.error().description, "more than 300 megapixels");
}

TEST_F(Optimizer, SkipsAnExistingOutputWhenToldTo)
{
    const auto source = photo("my photo.png");
    test::writeText(m_in / "my photo.webp", "an earlier output");
    m_answer = false;
    EXPECT_EQ(failureOf(source, {.warnBeforeOverwrite = true}),
              "Skipped because the output file already exists.");
    EXPECT_EQ(test::readBytes(m_in / "my photo.webp"), "an earlier output");
    EXPECT_THAT(m_asked, testing::ElementsAre("my photo.webp"));
}

TEST_F(Optimizer, ReplacesAnExistingOutputWhenToldTo)
{
    const auto source = photo("a.png");
    test::writeText(m_in / "a.webp", "an earlier output");
    EXPECT_TRUE(optimize(source, {.warnBeforeOverwrite = true}).isSuccess);
    EXPECT_THAT(test::readBytes(m_in / "a.webp"), StartsWith("RIFF"));
}

TEST_F(Optimizer, AsksOnceForEachCollidingFileAndNotForOthers)
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

TEST_F(Optimizer, ReplacesWithoutAskingWhenNotWarning)
{
    const auto source = photo("a.png");
    test::writeText(m_in / "a.webp", "an earlier output");
    EXPECT_TRUE(optimize(source).isSuccess);
    EXPECT_THAT(test::readBytes(m_in / "a.webp"), StartsWith("RIFF"));
    EXPECT_TRUE(m_asked.empty());
}

TEST_F(Optimizer, PassesOnWhyAnExistingOutputCannotBeRemoved)
{
    const auto source = photo("a.png");
    std::filesystem::create_directories(m_in / "a.webp" / "inside");
    const std::string failure = failureOf(source);
    EXPECT_THAT(failure, testing::HasSubstr("a.webp"));
    EXPECT_TRUE(std::filesystem::exists(m_in / "a.webp" / "inside"));
}

TEST_F(Optimizer, ReplacesALinkAndNotWhatItLeadsTo)
{
    const auto source = photo("a.png");
    test::writeText(m_folder / "treasure", "keep me");
    std::filesystem::create_symlink(m_folder / "treasure", m_in / "a.webp");
    optimize(source);
    EXPECT_EQ(test::readBytes(m_folder / "treasure"), "keep me");
    EXPECT_FALSE(std::filesystem::is_symlink(m_in / "a.webp"));
}

TEST_F(Optimizer, NeverReplacesTheInputThroughALinkedFolder)
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

TEST_F(Optimizer, KeepsDepthAndModelOfAPictureThatIsNotRedrawn)
{
    const SettingsDraft untouched{.resizeMode = ResizeMode::none,
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

TEST_F(Optimizer, BringsARedrawnDeepPictureToEightBits)
{
    const auto result =
        optimize(photo("deep.png", {.sixteenBits = true}), {.outputFormat = OutputFormat::png});
    EXPECT_EQ(test::inspect(*result.outputURL).bits, 8);
}

TEST_F(Optimizer, TurnsInkIntoTheColoursOfTheScreen)
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

TEST_F(Optimizer, ConvertsAWideGamutAndTagsOnlyWhatItShould)
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

TEST_F(Optimizer, KeepsTheOwnColoursOfAPictureThatIsOnlyReduced)
{
    test::save(m_in / "p3.png", test::uniformPicture(64, 64, {200, 100, 100}), {.profile = "p3"});
    const auto result = optimize(m_in / "p3.png", {.maximumPixels = 16,
                                                   .outputFormat = OutputFormat::png,
                                                   .optimizeColorForSharing = false,
                                                   .removeColorManagement = false});
    EXPECT_TRUE(test::inspect(*result.outputURL).hasProfile);
    EXPECT_THAT(test::load(*result.outputURL).at(3, 3), testing::ElementsAre(200, 100, 100));
}

TEST_F(Optimizer, NeverPutsAGrayProfileOnColouredPixels)
{
    test::save(m_in / "gray.png", test::uniformPicture(16, 16, {77}), {.grayProfile = true});
    const auto result = optimize(m_in / "gray.png", {.resizeMode = ResizeMode::none,
                                                     .outputFormat = OutputFormat::heic,
                                                     .optimizeColorForSharing = false,
                                                     .removeColorManagement = false});
    const std::string file = test::readBytes(*result.outputURL);
    EXPECT_EQ(file.find("GRAYXYZ "), std::string::npos);
}

TEST_F(Optimizer, LaysTransparencyOverWhiteInJpegAndOverBlackInWebP)
{
    test::save(m_in / "a.png", test::uniformPicture(16, 16, {200, 40, 40, 0}));
    const auto jpeg = test::load(*optimize(m_in / "a.png", {.outputFormat = OutputFormat::jpeg}).outputURL);
    for (const int component : jpeg.at(8, 8))
        EXPECT_GE(component, 253);
    const auto webp =
        test::load(*optimize(m_in / "a.png", {.outputFormat = OutputFormat::webpLossless}).outputURL);
    EXPECT_THAT(webp.at(8, 8), testing::ElementsAre(0, 0, 0));
}

TEST_F(Optimizer, KeepsTransparencyInPng)
{
    test::save(m_in / "a.png", test::uniformPicture(16, 16, {200, 40, 40, 128}));
    const auto png = test::load(
        *optimize(m_in / "a.png", {.maximumPixels = 8, .outputFormat = OutputFormat::png}).outputURL);
    const auto color = png.at(4, 4);
    ASSERT_EQ(color.size(), 4U);
    EXPECT_EQ(color[3], 128);
    EXPECT_NEAR(color[0], 200, 1);
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
// does not.
TEST_F(Optimizer, ReducesWithoutShiftingOrChangingTheTone)
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
