// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How the outputs of one batch are kept apart.
#include "engine/batch_names.h"
#include "engine/output_plan.h"
#include "formats/image_source.h"
#include "tests/engine/optimizer_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/statfs.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <linux/magic.h>

#include <string_view>

// In this program a folder named "memory card" is one.
extern "C" int statfs(const char* path, struct statfs* system)
{
    const long status = ::syscall(SYS_statfs, path, system);
    if (status == 0 && std::string_view(path).find("memory card") != std::string_view::npos)
        system->f_type = EXFAT_SUPER_MAGIC;
    return static_cast<int>(status);
}

namespace lumora {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class BatchNames : public test::OptimizerTest
{
protected:
    // Where the outputs of these files go when they are one batch.
    std::vector<std::string> outputs(const std::vector<fs::path>& inputs,
                                     const test::SettingsDraft& draft = {})
    {
        const OptimizerSettings chosen = test::settings(draft);
        const ImageOptimizer::BatchNames names(inputs, chosen);
        std::vector<std::string> result;
        for (const auto& input : inputs) {
            const auto source = ImageSource::open(input);
            const auto planned = ImageOptimizer::plan(input, *source->typeIdentifier(), chosen, names);
            result.push_back(planned.path.lexically_relative(m_folder.path()));
        }
        return result;
    }

    fs::path file(const fs::path& name)
    {
        fs::create_directories((m_folder / name).parent_path());
        test::save(m_folder / name, test::corneredPicture(16, 8));
        return m_folder / name;
    }

    const test::SettingsDraft m_jpeg{.outputFormat = OutputFormat::jpeg};
};

TEST_F(BatchNames, LeaveTheFirstInputItsNameAndNumberTheOthersInInputOrder)
{
    const auto a = file("in/IMG_1.png");
    const auto b = file("in/IMG_1.tiff");
    const auto c = file("in/IMG_1.bmp");
    EXPECT_THAT(outputs({b, a, c}), ElementsAre("in/IMG_1.webp", "in/IMG_1 2.webp", "in/IMG_1 3.webp"));
}

TEST_F(BatchNames, NeverGiveTheNameOfAnInputAway)
{
    const auto jpeg = file("in/a.jpg");
    const auto png = file("in/a.png");
    EXPECT_THAT(outputs({jpeg, png}, m_jpeg), ElementsAre("in/a-optimized.jpg", "in/a 2.jpg"));
    EXPECT_THAT(outputs({png, jpeg}, m_jpeg), ElementsAre("in/a 2.jpg", "in/a-optimized.jpg"));
}

TEST_F(BatchNames, PassOverNumbersThatAreInputsOrOutputsThemselves)
{
    const auto a = file("in/a.png");
    const auto again = file("in/a.bmp");
    const auto second = file("in/a 2.png");
    const auto third = file("in/a 3.webp");
    EXPECT_THAT(outputs({a, again, second, third}),
                ElementsAre("in/a.webp", "in/a 4.webp", "in/a 2.webp", "in/a 3-optimized.webp"));
}

TEST_F(BatchNames, KeepFoldersWithEqualNamesApartInOneOutputFolder)
{
    const auto inputs = {file("one/IMG_1.jpg"), file("two/IMG_1.jpg"), file("three/IMG_1.jpg")};
    EXPECT_THAT(outputs(inputs, {.destinationMode = DestinationMode::selectedFolder,
                                 .destinationFolderURL = m_folder / "out"}),
                ElementsAre("out/IMG_1.webp", "out/IMG_1 2.webp", "out/IMG_1 3.webp"));
}

TEST_F(BatchNames, FollowTheContentWhereTheFormatStays)
{
    const auto misnamed = file("in/a.png");
    fs::rename(misnamed, m_in / "a.jpeg"); // still a PNG inside
    const auto other = file("out/a.png");
    EXPECT_THAT(outputs({m_in / "a.jpeg", other}, {.outputFormat = OutputFormat::original,
                                                   .destinationMode = DestinationMode::selectedFolder,
                                                   .destinationFolderURL = m_folder / "made"}),
                ElementsAre("made/a.png", "made/a 2.png"));
}

TEST_F(BatchNames, SeeThroughLinksToFolders)
{
    const auto a = file("in/a.png");
    file("in/a.bmp");
    fs::create_directory_symlink("in", m_folder / "link");
    EXPECT_THAT(outputs({a, m_folder / "link/a.bmp"}), ElementsAre("in/a.webp", "link/a 2.webp"));
}

TEST_F(BatchNames, SeeAnInputBehindALinkAtTheOutputsName)
{
    const auto a = file("in/a.png");
    const auto precious = file("precious/b.jpg");
    fs::create_symlink(precious, m_in / "a.webp");
    fs::create_hard_link(precious, m_in / "c.webp");
    const auto c = file("in/c.png");
    EXPECT_THAT(outputs({a, c, precious}), ElementsAre("in/a 2.webp", "in/c 2.webp", "precious/b.webp"));
}

TEST_F(BatchNames, KeepApartWhatAFolderThatIgnoresCaseTakesForOne)
{
    fs::create_directory(m_folder / "memory card");
    const auto upper = file("one/IMG.png");
    const auto lower = file("two/img.png");
    const auto accents = file("one/\u00C9t\u00E9.png");
    const auto capitals = file("two/\u00C9T\u00C9.png");
    EXPECT_THAT(
        outputs({upper, lower, accents, capitals}, {.destinationMode = DestinationMode::selectedFolder,
                                                    .destinationFolderURL = m_folder / "memory card"}),
        ElementsAre("memory card/IMG.webp", "memory card/img 2.webp", "memory card/\u00C9t\u00E9.webp",
                    "memory card/\u00C9T\u00C9 2.webp"));
    EXPECT_THAT(outputs({upper, lower}, {.destinationMode = DestinationMode::selectedFolder,
                                         .destinationFolderURL = m_folder / "disk"}),
                ElementsAre("disk/IMG.webp", "disk/img.webp"));
}

TEST_F(BatchNames, TakeTheNameOfTheirOriginalForItselfWhereCaseIsIgnored)
{
    const auto card = file("memory card/IMG.JPG");
    EXPECT_THAT(outputs({card}, m_jpeg), ElementsAre("memory card/IMG-optimized.jpg"));
    const auto disk = file("disk/IMG.JPG");
    EXPECT_THAT(outputs({disk}, m_jpeg), ElementsAre("disk/IMG.jpg"));
}

TEST_F(BatchNames, NeverReplaceAStrangerUnderANumberThatNobodyAskedFor)
{
    const auto a = file("in/a.png");
    const auto b = file("in/a.bmp");
    test::writeText(m_in / "a.webp", "from an earlier run");
    test::writeText(m_in / "a 2.webp", "a stranger's");
    EXPECT_THAT(outputs({a, b}), ElementsAre("in/a.webp", "in/a 3.webp"));
    EXPECT_THAT(outputs({a, b}, {.warnBeforeOverwrite = true}), ElementsAre("in/a.webp", "in/a 2.webp"));
}

TEST_F(BatchNames, AreNotDecidedWithoutAFolderToGoTo)
{
    const auto a = photo("a.png");
    const auto chosen = test::settings({.destinationMode = DestinationMode::selectedFolder});
    const ImageOptimizer::BatchNames names({a, a}, chosen);
    EXPECT_EQ(names.otherOutputOf(a), nullptr);
}

TEST_F(BatchNames, StayWithinTheLengthOfAName)
{
    const std::string stem(250, 'x');
    const auto names = outputs({file("in/" + stem + ".png"), file("in/" + stem + ".bmp")});
    EXPECT_NE(names[0], names[1]);
    for (const auto& name : names)
        EXPECT_LE(fs::path(name).filename().native().size(), 255U);
}

TEST_F(BatchNames, KeepAnOriginalThatIsReadUnderAFurtherNameToo)
{
    const auto a = photo("a.png");
    fs::create_symlink("a.png", m_in / "link.png");
    const test::SettingsDraft toTrash{.moveOriginalToTrash = true};
    m_services.names = std::make_shared<ImageOptimizer::BatchNames>(std::vector{a, m_in / "link.png"},
                                                                    test::settings(toTrash));
    EXPECT_THAT(optimize(a, toTrash).message, testing::EndsWith("Original could not be moved to Trash"));
    EXPECT_TRUE(optimize(m_in / "link.png", toTrash).isSuccess);
    EXPECT_TRUE(fs::exists(a));
    EXPECT_FALSE(fs::is_symlink(m_in / "link.png"));
}

} // namespace
} // namespace lumora
