// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/webp_encoder.h"

#include "engine/image_transform.h"
#include "engine/ppm_writer.h"
#include "records/errors.h"
#include "tests/support/fake_encoder.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using namespace ImageOptimizer;
using test::settings;
using test::SettingsDraft;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

class WebPEncoder : public test::EncoderTest
{
protected:
    Image imageOf(const test::Pixels& pixels)
    {
        test::save(m_folder / "source.png", pixels);
        auto source = ImageSource::open(m_folder / "source.png");
        EXPECT_TRUE(source);
        return transformedImage(source->image(), settings());
    }

    std::string failureOf(const std::filesystem::path& output, const SettingsDraft& draft = {})
    {
        try {
            encodeWebPWithCWebP(imageOf(test::corneredPicture(8, 6)), output, settings(draft), {},
                                {m_bundle, {}});
        } catch (const ImageOptimizerError& error) {
            return error.what();
        }
        return "no failure";
    }
};

TEST_F(WebPEncoder, WritesAPpmOfHeaderAndPixelsOnly)
{
    writePPM(imageOf({2, 1, 3, {1, 2, 3, 250, 251, 252}}), m_folder / "a.ppm");
    EXPECT_EQ(test::readBytes(m_folder / "a.ppm"), std::string("P6\n2 1\n255\n\x01\x02\x03\xFA\xFB\xFC"));
}

TEST_F(WebPEncoder, WritesTransparentPixelsBlackAndHalfTransparentOnesDarkened)
{
    writePPM(imageOf({3, 1, 4, {200, 100, 50, 0, 200, 100, 50, 128, 200, 100, 50, 255}}), m_folder / "a.ppm");
    const std::string ppm = test::readBytes(m_folder / "a.ppm");
    const std::vector<int> pixels(reinterpret_cast<const unsigned char*>(ppm.data()) + 11,
                                  reinterpret_cast<const unsigned char*>(ppm.data()) + ppm.size());
    EXPECT_THAT(pixels, ElementsAre(0, 0, 0, 100, 50, 25, 200, 100, 50));
}

TEST_F(WebPEncoder, NamesThePpmThatItCannotWrite)
{
    try {
        writePPM(imageOf(test::corneredPicture(2, 2)), m_folder / "missing" / "a.ppm");
        FAIL();
    } catch (const ImageOptimizerError& error) {
        EXPECT_EQ(error.kind(), ImageOptimizerError::Kind::cannotFinalize);
        EXPECT_THAT(error.what(), StartsWith("Could not finish writing a.ppm: "));
    }
}

TEST_F(WebPEncoder, ChoosesTheMetadataArgumentFromTwoSettings)
{
    const auto argument = [](bool metadata, bool color) {
        return webPMetadataArgument(settings({.removeColorManagement = color, .removeMetadata = metadata}));
    };
    EXPECT_EQ(argument(true, true), "none");
    EXPECT_EQ(argument(true, false), "icc");
    EXPECT_EQ(argument(false, true), "exif,xmp");
    EXPECT_EQ(argument(false, false), "all");
}

TEST_F(WebPEncoder, GivesTheEncoderItsArgumentsInOrder)
{
    EXPECT_THAT(cwebpArguments(settings(), "/t/a.ppm", "/t/b.webp"),
                ElementsAre("-quiet", "-metadata", "none", "-q", "82", "/t/a.ppm", "-o", "/t/b.webp"));
    EXPECT_THAT(cwebpArguments(settings({.outputFormat = OutputFormat::webpLossless, .quality = 3}),
                               "/t/a.ppm", "/t/b.webp"),
                ElementsAre("-quiet", "-metadata", "none", "-lossless", "/t/a.ppm", "-o", "/t/b.webp"));
}

TEST_F(WebPEncoder, TruncatesTheQualityAndDoesNotClampIt)
{
    EXPECT_EQ(cwebpArguments(settings({.quality = 82.9}), "p", "w").at(4), "82");
    EXPECT_EQ(cwebpArguments(settings({.quality = 250}), "p", "w").at(4), "250");
    EXPECT_EQ(cwebpArguments(settings({.quality = -0.5}), "p", "w").at(4), "0");
}

TEST_F(WebPEncoder, PrefersTheOverrideAndFallsBackWhenItCannotRun)
{
    installBundled("exit 0");
    const auto bundled = m_bundle / "Contents" / "MacOS" / "cwebp";
    EXPECT_EQ(bundledCWebPExecutableURL(m_bundle), bundled);

    const auto preferred = script("preferred", "exit 0");
    setOverride(preferred);
    EXPECT_EQ(bundledCWebPExecutableURL(m_bundle), preferred);

    setOverride(m_folder / "missing");
    EXPECT_EQ(bundledCWebPExecutableURL(m_bundle), bundled);
    test::writeText(m_folder / "plain", "not executable");
    setOverride(m_folder / "plain");
    EXPECT_EQ(bundledCWebPExecutableURL(m_bundle), bundled);
    setOverride(m_folder.path());
    EXPECT_EQ(bundledCWebPExecutableURL(m_bundle), bundled);
}

TEST_F(WebPEncoder, SaysTwiceThatNoEncoderIsBundled)
{
    EXPECT_EQ(
        failureOf(m_folder / "a.webp"),
        "WebP support is not bundled in this build. is not supported by this macOS ImageIO installation.");
}

TEST_F(WebPEncoder, NamesAnEncoderThatCannotBeLaunched)
{
    const auto broken = script("broken", "exit 0", "#!/no/such/interpreter");
    setOverride(broken);
    const std::string failure = failureOf(m_folder / "a.webp");
    EXPECT_THAT(failure, StartsWith("WebP encoder at " + broken.string() + " could not be launched: "));
    EXPECT_THAT(failure, testing::EndsWith(" is not supported by this macOS ImageIO installation."));
}

TEST_F(WebPEncoder, PassesTheEncodersOwnWordsOnTrimmed)
{
    installBundled("printf '  \\n Error! too big \\n\\n' >&2; exit 3");
    EXPECT_EQ(failureOf(m_folder / "a.webp"), "Could not finish writing a.webp: Error! too big");
}

TEST_F(WebPEncoder, NamesTheStatusOfASilentFailure)
{
    installBundled("printf ' \\n\\t ' >&2; exit 1");
    EXPECT_EQ(failureOf(m_folder / "a.webp"), "Could not finish writing a.webp: cwebp exited with status 1");
    for (const char* words : {"\\377\\376", "too long: \\300\\200", "half: \\355\\240\\200", "cut: \\303"}) {
        installBundled("printf '" + std::string(words) + "' >&2; exit 7");
        EXPECT_EQ(failureOf(m_folder / "a.webp"),
                  "Could not finish writing a.webp: cwebp exited with status 7")
            << words;
    }
}

TEST_F(WebPEncoder, DoesNotStallOnAMegabyteOfComplaints)
{
    installBundled("head -c 1000000 /dev/zero | tr '\\0' 'x' >&2; exit 2");
    EXPECT_EQ(failureOf(m_folder / "a.webp").size(),
              std::string("Could not finish writing a.webp: ").size() + 1000000);
}

TEST_F(WebPEncoder, NoticesAnEncoderThatWritesNothing)
{
    installBundled("exit 0");
    EXPECT_EQ(failureOf(m_folder / "a.webp"),
              "Could not finish writing a.webp: cwebp did not create an output file");
}

TEST_F(WebPEncoder, CopiesTheResultAndLeavesNoTemporaryFile)
{
    installBundled("while [ \"$1\" != -o ]; do shift; done; printf result > \"$2\"");
    EXPECT_EQ(failureOf(m_folder / "a.webp"), "no failure");
    EXPECT_EQ(test::readBytes(m_folder / "a.webp"), "result");
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
}

TEST_F(WebPEncoder, SaysWhyTheResultCannotBeSaved)
{
    installBundled("while [ \"$1\" != -o ]; do shift; done; printf result > \"$2\"");
    EXPECT_THAT(failureOf(m_folder / "missing" / "a.webp"), StartsWith("Could not save a.webp: "));
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
}

TEST_F(WebPEncoder, LeavesNoTemporaryFileAfterAFailure)
{
    installBundled("while [ \"$1\" != -o ]; do shift; done; printf half > \"$2\"; exit 1");
    failureOf(m_folder / "a.webp");
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
    EXPECT_FALSE(std::filesystem::exists(m_folder / "a.webp"));
}

TEST_F(WebPEncoder, HandsThePpmOverAsItsParentWroteIt)
{
    installBundled("cp \"$6\" '" + (m_folder / "seen.ppm").string() +
                   "'; while [ \"$1\" != -o ]; do shift; done; printf x > \"$2\"");
    EXPECT_EQ(failureOf(m_folder / "a.webp"), "no failure");
    EXPECT_THAT(test::readBytes(m_folder / "seen.ppm"), StartsWith("P6\n8 6\n255\n"));
}

TEST_F(WebPEncoder, IsKilledWhenAskedToStop)
{
    // The stop is asked for before the launch, so that the endless script is ended whenever it gets there.
    installBundled("while :; do sleep 1; done");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(encodeWebPWithCWebP(imageOf(test::corneredPicture(8, 6)), m_folder / "a.webp", settings(),
                                     {}, {m_bundle, stop.get_token()}),
                 ImageOptimizerError);
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
}

} // namespace
} // namespace lumora
