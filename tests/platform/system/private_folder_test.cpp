// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/private_folder.h"

#include "system/atomic_file.h"
#include "system/draft_note.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lumora {
namespace {

namespace fs = std::filesystem;

class PrivateFolderTest : public testing::Test
{
protected:
    PrivateFolderTest() { setenv("TMPDIR", m_temporary.path().c_str(), 1); }
    ~PrivateFolderTest() override { unsetenv("TMPDIR"); }

    std::size_t entryCount() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_temporary.path()), {}));
    }

    const test::TemporaryDirectory m_temporary;
};

TEST_F(PrivateFolderTest, OpensToNobodyElse)
{
    const auto folder = PrivateFolder::shared();
    ASSERT_TRUE(folder);
    EXPECT_EQ((*folder)->path().parent_path(), m_temporary.path());
    EXPECT_EQ(fs::status((*folder)->path()).permissions(), fs::perms::owner_all);
}

TEST_F(PrivateFolderTest, IsOneForAllAndGoesWithTheLast)
{
    auto first = *PrivateFolder::shared();
    auto second = *PrivateFolder::shared();
    EXPECT_EQ(first->path(), second->path());
    test::writeFile(first->path() / "left.ppm", "pixels");
    first.reset();
    EXPECT_TRUE(fs::exists(second->path() / "left.ppm"));
    second.reset();
    EXPECT_EQ(entryCount(), 0U);
}

TEST_F(PrivateFolderTest, CannotBeMadeInAFolderThatIsNotWritable)
{
    setenv("TMPDIR", "/proc", 1);
    const auto folder = PrivateFolder::shared();
    ASSERT_FALSE(folder);
    EXPECT_NE(folder.error().description.find("could not be made"), std::string::npos);
}

TEST_F(PrivateFolderTest, OfAKilledProcessIsRemovedAndThatOfALivingOneIsNot)
{
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto folder = PrivateFolder::shared();
        test::writeFile((*folder)->path() / "half.ppm", "pixels");
        raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(entryCount(), 1U);
    const auto living = *PrivateFolder::shared();
    fs::create_directory(m_temporary / "lumora-other");
    removeAbandonedFolders();
    EXPECT_EQ(entryCount(), 2U);
    EXPECT_TRUE(fs::exists(living->path()));
    EXPECT_TRUE(fs::exists(m_temporary / "lumora-other"));
}

TEST_F(PrivateFolderTest, LeadsToTheDraftsOfAProcessThatWasKilled)
{
    const fs::path pictures = m_temporary / "pictures";
    fs::create_directory(pictures);
    test::writeFile(pictures / "other", "not a draft");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto draft = AtomicFile::create(pictures / "a.webp", Draft::named);
        const DraftNote misleading(pictures / "other");
        raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(std::distance(fs::directory_iterator(pictures), {}), 2);
    removeAbandonedFolders();
    EXPECT_EQ(std::distance(fs::directory_iterator(pictures), {}), 1);
    EXPECT_TRUE(fs::exists(pictures / "other"));
    EXPECT_EQ(entryCount(), 1U);
}

TEST_F(PrivateFolderTest, IsNotMistakenForALinkThatBearsItsName)
{
    fs::create_directory(m_temporary / "precious");
    fs::create_directory_symlink("precious", m_temporary / "lumora-run-abcdef");
    removeAbandonedFolders();
    EXPECT_TRUE(fs::exists(m_temporary / "precious"));
}

} // namespace
} // namespace lumora
