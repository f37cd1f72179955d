// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/webp_encoder.h"

#include "engine/local/image_transform.h"
#include "formats/ppm_writer.h"
#include "records/errors.h"
#include "tests/support/fake_encoder.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace lumora {
namespace {

using namespace ImageOptimizer;
using test::settings;
using test::SettingsDraft;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::StartsWith;

std::vector<std::string> linesOf(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::istringstream text(test::readBytes(file));
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    return lines;
}

class WebPEncoder : public test::EncoderTest
{
protected:
    // What the encoder would have made of the picture below.
    std::filesystem::path picture()
    {
        test::save(m_folder / "made.webp", test::corneredPicture(8, 6));
        return m_folder / "made.webp";
    }

    Image imageOf(const test::Pixels& pixels)
    {
        test::save(m_folder / "source.png", pixels);
        auto source = ImageSource::open(m_folder / "source.png");
        EXPECT_TRUE(source);
        return transformedImage(source->image(), settings());
    }

    PpmMaker smallPicture()
    {
        return [image = imageOf(test::corneredPicture(8, 6))](
                   OutputFile& file) -> Result<std::pair<std::int64_t, std::int64_t>, PpmError> {
            const auto written = writePpm(image, file);
            if (!written) return written.error();
            return std::pair(image.width(), image.height());
        };
    }

    std::string failureOf(const std::filesystem::path& output, const SettingsDraft& draft = {})
    {
        try {
            auto file = encodeWebPWithCWebP(smallPicture(), output, settings(draft), {});
            EXPECT_TRUE(file.commit());
        } catch (const ImageOptimizerError& error) {
            return error.what();
        }
        return "no failure";
    }
};

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
    installBundled("printf '%s\\n' \"$@\" > '" + (m_folder / "arguments").string() + "'; exit 1");
    const auto argumentsOf = [this](const SettingsDraft& draft) {
        failureOf(m_folder / "a.webp", draft);
        return linesOf(m_folder / "arguments");
    };
    const auto temporary = [this](const std::string& extension) {
        return MatchesRegex(m_temporary.string() + "/lumora-run-[A-Za-z0-9]{6}/lumora-[0-9A-F-]{36}\\." +
                            extension);
    };
    EXPECT_THAT(argumentsOf({}), ElementsAre("-quiet", "-metadata", "none", "-q", "82", temporary("ppm"),
                                             "-o", temporary("webp")));
    EXPECT_THAT(
        argumentsOf({.outputFormat = OutputFormat::webpLossless, .quality = 3}),
        ElementsAre("-quiet", "-metadata", "none", "-lossless", temporary("ppm"), "-o", temporary("webp")));
}

TEST_F(WebPEncoder, TruncatesTheQualityAndDoesNotClampIt)
{
    EXPECT_EQ(cwebpOptions(settings({.quality = 82.9})).at(4), "82");
    EXPECT_EQ(cwebpOptions(settings({.quality = 250})).at(4), "250");
    EXPECT_EQ(cwebpOptions(settings({.quality = -0.5})).at(4), "0");
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
    installWriting(picture());
    EXPECT_EQ(failureOf(m_folder / "a.webp"), "no failure");
    EXPECT_EQ(test::readBytes(m_folder / "a.webp"), test::readBytes(picture()));
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
}

TEST_F(WebPEncoder, DoesNotBelieveAnEncoderThatSaysItSucceeded)
{
    const std::string whole = test::readBytes(picture());
    test::writeText(m_folder / "empty", "");
    test::writeText(m_folder / "words", "hi");
    test::writeText(m_folder / "cut", whole.substr(0, whole.size() - 10));
    test::writeText(m_folder / "longer", whole + "more");
    test::save(m_folder / "another.webp", test::corneredPicture(6, 8));
    for (const char* name : {"empty", "words", "cut", "longer", "another.webp"}) {
        installWriting(m_folder / name);
        EXPECT_EQ(failureOf(m_folder / "a.webp"),
                  "Could not finish writing a.webp: cwebp did not write a whole file")
            << name;
        EXPECT_FALSE(std::filesystem::exists(m_folder / "a.webp")) << name;
    }
}

TEST_F(WebPEncoder, SaysWhyTheResultCannotBeSaved)
{
    installWriting(picture());
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
                   "'; while [ \"$1\" != -o ]; do shift; done; cp '" + picture().string() + "' \"$2\"");
    EXPECT_EQ(failureOf(m_folder / "a.webp"), "no failure");
    EXPECT_THAT(test::readBytes(m_folder / "seen.ppm"), StartsWith("P6\n8 6\n255\n"));
}

TEST_F(WebPEncoder, IsKilledWhenAskedToStop)
{
    // The stop is asked for before the launch, so that the endless script is ended whenever it gets there.
    installBundled("while :; do sleep 1; done");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(encodeWebPWithCWebP(smallPicture(), m_folder / "a.webp", settings(), stop.get_token()),
                 ImageOptimizerError);
    EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
}

} // namespace
} // namespace lumora
