// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Text chunks of a PNG, as an independent reader finds them.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::settings;
using test::tagOf;
using testing::HasSubstr;
using testing::Not;

class KeptPngText : public testing::Test
{
protected:
    std::filesystem::path withTitle(const std::string& title)
    {
        test::save(m_folder / "a.png", test::corneredPicture(16, 12));
        test::writeTag(m_folder / "a.png", "PNG:Title", title);
        return m_folder / "a.png";
    }

    std::filesystem::path optimized(const std::filesystem::path& file)
    {
        const auto result = ImageOptimizer::optimize(
            file, settings({.outputFormat = OutputFormat::png, .removeMetadata = false}),
            test::localServices());
        return *result.outputURL;
    }

    test::TemporaryDirectory m_folder;
};

TEST_F(KeptPngText, IsPlainWhereItIsAscii)
{
    const auto file = optimized(withTitle("Harbour"));
    EXPECT_EQ(tagOf(file, "PNG:Title"), "Harbour\n");
    EXPECT_THAT(test::readBytes(file), HasSubstr(std::string("tEXtTitle\0Harbour", 17)));
}

TEST_F(KeptPngText, OfAnyLanguageKeepsItsLetters)
{
    const auto file = optimized(withTitle("Größe ☃"));
    EXPECT_EQ(tagOf(file, "PNG:Title"), "Größe ☃\n");
    EXPECT_THAT(test::readBytes(file), Not(HasSubstr("tEXt")));
}

TEST_F(KeptPngText, InTheOldAlphabetKeepsItsLetters)
{
    const auto file = withTitle("Gr##e");
    const std::string chunk("tEXtTitle\0Gr##e", 15);
    const std::string latin("tEXtTitle\0Gr\xF6\xDF"
                            "e]\xE8\x11{",
                            19);
    std::string bytes = test::readBytes(file);
    bytes.replace(bytes.find(chunk), latin.size(), latin); // the chunk's new checksum at its end
    test::writeText(file, bytes);
    ASSERT_EQ(tagOf(file, "PNG:Title"), "Größe\n");
    EXPECT_EQ(tagOf(optimized(file), "PNG:Title"), "Größe\n");
}

} // namespace
} // namespace lumora
