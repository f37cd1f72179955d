// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What no timing and no failure may take: an original, an older output, another picture's only copy.
#include "engine/batch_names.h"
#include "engine/output_plan.h"
#include "tests/engine/optimizer_test.h"
#include "tests/support/file_size_limit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using testing::EndsWith;
using testing::StartsWith;

class NothingLost : public test::OptimizerTest
{
protected:
    void beOneBatch(const std::vector<fs::path>& inputs, const test::SettingsDraft& draft)
    {
        m_services.names = std::make_shared<ImageOptimizer::BatchNames>(inputs, test::settings(draft));
        m_services.outputs = std::make_shared<ImageOptimizer::BatchOutputs>();
    }

    // A WebP whose head is right and whose picture is not.
    fs::path hollowWebp()
    {
        std::string bytes = test::readBytes(webpOfSize(64, 48, 2000));
        for (std::size_t i = 40; i < bytes.size(); ++i)
            bytes[i] = '\0';
        test::writeText(m_folder / "hollow.webp", bytes);
        return m_folder / "hollow.webp";
    }

    const test::SettingsDraft m_toTrash{.resizeMode = ResizeMode::none, .moveOriginalToTrash = true};
};

TEST_F(NothingLost, SaysWhyTheSystemDidNotTakeTheOutput)
{
    const auto source = photo("a.png");
    for (const OutputFormat format : {OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic}) {
        const test::FileSizeLimit full(20);
        EXPECT_THAT(failureOf(source, {.outputFormat = format}),
                    testing::AllOf(StartsWith("Could not finish writing a"), EndsWith(": File too large")))
            << static_cast<int>(format);
    }
    for (const char* name : {"b.bmp", "b.gif"}) {
        test::save(m_in / name, test::corneredPicture(32, 24));
        const test::FileSizeLimit full(20);
        EXPECT_THAT(failureOf(m_in / name, {.outputFormat = OutputFormat::original}),
                    EndsWith(": File too large"))
            << name;
    }
}

TEST_F(NothingLost, LeavesWhatAppearedMeanwhileToAWholeOutputOnly)
{
    const auto source = photo("a.png");
    installWriting(hollowWebp(), "printf 'another file' > '" + (m_in / "a.webp").string() + "'");
    EXPECT_THAT(failureOf(source, {.resizeMode = ResizeMode::none}),
                StartsWith("Could not finish writing a.webp"));
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "another file");
}

TEST_F(NothingLost, ReplacesAnOlderOutputOnlyByAWholeOne)
{
    const auto source = photo("a.png");
    test::writeText(m_in / "a.webp", "an earlier output");
    installWriting(hollowWebp());
    EXPECT_NE(failureOf(source, {.resizeMode = ResizeMode::none}), "no failure");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), "an earlier output");
    fs::remove(m_in / "a.webp");
    EXPECT_NE(failureOf(source, m_toTrash), "no failure");
    EXPECT_TRUE(fs::exists(source));
}

TEST_F(NothingLost, NumbersAnOutputWhoseNameHasTheOnlyCopyOfAnotherPicture)
{
    const auto first = photo("IMG_1.png");
    const auto second = m_in / "IMG_1.bmp";
    test::save(second, test::corneredPicture(32, 24));
    EXPECT_TRUE(optimize(first, m_toTrash).isSuccess); // interrupted here, and started again:
    const std::string kept = test::readBytes(m_in / "IMG_1.webp");
    beOneBatch({second}, m_toTrash);
    EXPECT_EQ(optimize(second, m_toTrash).outputURL, m_in / "IMG_1 2.webp");
    EXPECT_EQ(test::readBytes(m_in / "IMG_1.webp"), kept);
}

TEST_F(NothingLost, ReplacesTheOutputOfAnOriginalThatCameBackFromTheTrash)
{
    const auto source = photo("a.png");
    EXPECT_TRUE(optimize(source, m_toTrash).isSuccess);
    fs::rename(m_trash / "a.png", source);
    beOneBatch({source}, m_toTrash);
    EXPECT_EQ(optimize(source, m_toTrash).outputURL, m_in / "a.webp");
}

TEST_F(NothingLost, ReplacesTheOutputOfAnOriginalThatIsStillThere)
{
    const auto first = photo("a.png");
    const auto second = m_in / "a.bmp";
    test::save(second, test::corneredPicture(32, 24));
    m_services.moveToTrash = [](const fs::path&) -> Status { return Error{"no Trash"}; };
    EXPECT_TRUE(optimize(first, m_toTrash).isSuccess);
    beOneBatch({second}, {});
    EXPECT_EQ(optimize(second).outputURL, m_in / "a.webp");
}

TEST_F(NothingLost, SkipsWhereTheOnlyCopyOfAnotherPictureAppearedMeanwhile)
{
    const auto first = photo("a.png");
    const auto second = m_in / "a.bmp";
    test::save(second, test::corneredPicture(32, 24));
    beOneBatch({second}, {});
    const auto names = m_services.names;
    m_services.names = std::make_shared<ImageOptimizer::BatchNames>();
    EXPECT_TRUE(optimize(first, m_toTrash).isSuccess); // by another program
    m_services.names = names;
    m_services.outputs = std::make_shared<ImageOptimizer::BatchOutputs>();
    const std::string kept = test::readBytes(m_in / "a.webp");
    EXPECT_EQ(failureOf(second), "Skipped because the output file already exists.");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), kept);
}

// As two inputs do where the file system takes two names for one.
TEST_F(NothingLost, NeverReplacesAnOutputOfItsOwnBatch)
{
    const auto first = photo("a.png");
    const auto second = m_in / "a.bmp";
    test::save(second, test::corneredPicture(32, 24));
    test::writeText(m_in / "a.webp", "from an earlier run");
    m_services.outputs = std::make_shared<ImageOptimizer::BatchOutputs>();
    EXPECT_TRUE(optimize(first).isSuccess);
    const std::string kept = test::readBytes(m_in / "a.webp");
    EXPECT_EQ(failureOf(second), "Skipped because the output file already exists.");
    EXPECT_EQ(test::readBytes(m_in / "a.webp"), kept);
}

TEST_F(NothingLost, KnowsTheNameOfAPictureThatOnlyClaimsItsFormat)
{
    test::save(m_in / "a.heic", test::corneredPicture(64, 48));
    std::string bytes = test::readBytes(m_in / "a.heic");
    for (const std::size_t brand : {8U, 16U, 20U, 24U}) // what it claims to be; coded as before
        if (bytes.compare(brand, 3, "hei") == 0) bytes.replace(brand, 4, "mif1");
    test::writeText(m_in / "a.heif", bytes);
    const test::SettingsDraft original{.resizeMode = ResizeMode::none,
                                       .outputFormat = OutputFormat::original};
    beOneBatch({m_in / "a.heif", m_in / "a.heic"}, original);
    const std::string before = test::readBytes(m_in / "a.heic");
    EXPECT_EQ(optimize(m_in / "a.heif", original).outputURL, m_in / "a 2.heic");
    EXPECT_EQ(test::readBytes(m_in / "a.heic"), before);
}

TEST_F(NothingLost, WritesNowhereButWhereTheBatchDecided)
{
    const auto changed = photo("a.png");
    const auto other = m_in / "a.jpg";
    test::save(other, test::corneredPicture(32, 24));
    const test::SettingsDraft original{.outputFormat = OutputFormat::original};
    beOneBatch({changed, other}, original);
    const std::string before = test::readBytes(other);
    fs::copy_file(other, changed, fs::copy_options::overwrite_existing); // would become a.jpg now
    EXPECT_EQ(failureOf(changed, original), "The image could not be read.");
    EXPECT_EQ(test::readBytes(other), before);
}

TEST_F(NothingLost, KeepsAnOriginalThatChangedWhileItWasEncoded)
{
    const auto source = photo("a.png");
    test::save(m_folder / "made.webp", test::load(source));
    installWriting(m_folder / "made.webp", "printf more >> '" + source.string() + "'");
    EXPECT_THAT(optimize(source, m_toTrash).message, EndsWith("Original could not be moved to Trash"));
    EXPECT_TRUE(fs::exists(source));
}

TEST_F(NothingLost, KeepsAnOriginalThatWasExchangedWhileItWasEncoded)
{
    const auto source = photo("a.png");
    test::save(m_folder / "made.webp", test::load(source));
    test::save(m_in / "b.png", test::corneredPicture(8, 8));
    installWriting(m_folder / "made.webp",
                   "mv '" + (m_in / "b.png").string() + "' '" + source.string() + "'");
    EXPECT_THAT(optimize(source, m_toTrash).message, EndsWith("Original could not be moved to Trash"));
    EXPECT_TRUE(fs::exists(source));
}

} // namespace
} // namespace lumora
