// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// XMP packets of more than one segment, and of more than is good for anybody, as an independent reader finds
// them.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

namespace lumora {
namespace {

using test::outputOf;
using test::settings;
using test::tagOf;
using testing::HasSubstr;
using testing::Not;

class KeptLargeXmp : public testing::TestWithParam<OutputFormat>
{
protected:
    KeptLargeXmp()
    {
        test::save(m_file, test::corneredPicture(64, 48));
        test::writeText(m_folder / "words", m_words);
        outputOf("exiftool -q -overwrite_original -api Compact=NoPadding -XMP-dc:Title=T '-XMP-dc:Source<=" +
                 (m_folder / "words").string() + "' '" + m_file.string() + "'");
    }

    std::filesystem::path optimized(bool removesMetadata) const
    {
        return *ImageOptimizer::optimize(m_file,
                                         settings({.outputFormat = GetParam(),
                                                   .removeMetadata = removesMetadata,
                                                   .filenameSuffix = "-out"}),
                                         test::localServices())
                    .outputURL;
    }

    const test::TemporaryDirectory m_folder;
    const std::filesystem::path m_file = m_folder / "a.jpg";
    const std::string m_words = std::string(200'000, 'w') + "end";
};

TEST_P(KeptLargeXmp, IsKeptWhole)
{
    ASSERT_EQ(tagOf(m_file, "XMP:Source"), m_words + "\n");
    ASSERT_THAT(test::readBytes(m_file), HasSubstr("http://ns.adobe.com/xmp/extension/"));
    const auto file = optimized(false);
    EXPECT_EQ(tagOf(file, "XMP:Title"), "T\n");
    EXPECT_EQ(tagOf(file, "XMP:Source"), m_words + "\n");
    EXPECT_EQ(tagOf(file, "Warning"), "");
}

TEST_P(KeptLargeXmp, IsGoneWhenItIsToBeRemoved)
{
    const std::string bytes = test::readBytes(optimized(true));
    EXPECT_THAT(bytes, Not(HasSubstr("ns.adobe.com")));
    EXPECT_THAT(bytes, Not(HasSubstr("wwwwwwww")));
}

INSTANTIATE_TEST_SUITE_P(Formats, KeptLargeXmp,
                         testing::Values(OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic,
                                         OutputFormat::original),
                         [](const auto& instance) { return std::string(rawValue(instance.param)); });

TEST(KeptXmpOfHeic, IsFoundInEveryOutput)
{
    const test::TemporaryDirectory folder;
    for (const char* name : {"a.heic", "a.avif"}) {
        test::save(folder / name, test::corneredPicture(64, 48));
        test::writeTag(folder / name, "XMP-dc:Title", "seen from the harbour");
        ASSERT_EQ(tagOf(folder / name, "XMP:Title"), "seen from the harbour\n") << name;
        for (const OutputFormat format : {OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic}) {
            const auto optimized = [&](bool removesMetadata) {
                return *ImageOptimizer::optimize(folder / name,
                                                 settings({.outputFormat = format,
                                                           .removeMetadata = removesMetadata,
                                                           .filenameSuffix = "-out"}),
                                                 test::localServices())
                            .outputURL;
            };
            EXPECT_EQ(tagOf(optimized(false), "XMP:Title"), "seen from the harbour\n") << name;
            EXPECT_EQ(tagOf(optimized(true), "XMP:Title"), "") << name;
        }
    }
}

// A PNG with so many different properties that looking through them all for each one takes minutes.
class XmpOfManyProperties : public testing::Test
{
protected:
    XmpOfManyProperties()
    {
        std::string packet = "<x:xmpmeta xmlns:x='adobe:ns:meta/'><rdf:RDF xmlns:rdf='http://www.w3.org/1999/"
                             "02/22-rdf-syntax-ns#'><rdf:Description rdf:about='' xmlns:m='http://m/'>";
        for (int i = 0; i < 60'000; ++i)
            packet += "<m:p" + std::to_string(i) + ">v</m:p" + std::to_string(i) + ">";
        packet += "</rdf:Description></rdf:RDF></x:xmpmeta>";
        test::writeText(m_folder / "packet", packet);
        test::save(m_folder / "a.png", test::corneredPicture(16, 12));
        test::save(m_folder / "a.tif", test::corneredPicture(16, 12));
    }

    double secondsFor(const char* name, bool removesMetadata) const
    {
        const auto file = m_folder / name;
        outputOf("exiftool -q -overwrite_original '-XMP<=" + (m_folder / "packet").string() + "' '" +
                 file.string() + "'");
        EXPECT_THAT(test::readBytes(file), HasSubstr("m:p59999"));
        const auto start = std::chrono::steady_clock::now();
        const auto result = ImageOptimizer::optimize(
            file, settings({.outputFormat = OutputFormat::png, .removeMetadata = removesMetadata}),
            test::localServices());
        EXPECT_TRUE(result.isSuccess);
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

    const test::TemporaryDirectory m_folder;
};

// The parser alone takes half a minute.
TEST_F(XmpOfManyProperties, CostsNoTime)
{
    for (const char* name : {"a.png", "a.tif"}) {
        EXPECT_LT(secondsFor(name, true), 5) << name;
        EXPECT_LT(secondsFor(name, false), 5) << name;
    }
}

} // namespace
} // namespace lumora
