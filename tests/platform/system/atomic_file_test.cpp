// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/atomic_file.h"

#include "system/regular_file.h"
#include "tests/support/file_size_limit.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <chrono>
#include <sys/stat.h>

namespace lumora {
namespace {

using test::FileSizeLimit;
using test::readFile;
using test::TemporaryDirectory;
using test::writeFile;

std::size_t entryCount(const std::filesystem::path& folder)
{
    return static_cast<std::size_t>(std::distance(std::filesystem::directory_iterator(folder), {}));
}

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text));
}

// Both kinds of draft, whatever the file system here can do.
class EachDraft : public testing::TestWithParam<Draft>
{
protected:
    Result<AtomicFile> create(const std::string& name) const
    {
        return AtomicFile::create(m_folder / name, GetParam());
    }
    std::uint32_t permissionsOf(const std::filesystem::path& file) const
    {
        struct stat status = {};
        EXPECT_EQ(::stat(file.c_str(), &status), 0);
        return status.st_mode & 0777U;
    }

    const TemporaryDirectory m_folder;
};

INSTANTIATE_TEST_SUITE_P(AtomicFile, EachDraft, testing::Values(Draft::unnamedWherePossible, Draft::named));

TEST_P(EachDraft, IsNobodyElsesUntilItHasItsNameAndPermissions)
{
    auto file = create("target");
    ASSERT_TRUE(file);
    EXPECT_EQ(permissionsOf(file->draft()), 0600U);
    file->setPermissions(0644);
    EXPECT_EQ(permissionsOf(file->draft()), 0600U);
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(permissionsOf(m_folder / "target"), 0644U);
}

TEST_P(EachDraft, GetsNoMorePermissionsThanTheUmaskLeavesToNewFiles)
{
    auto file = create("target");
    ASSERT_TRUE(file);
    file->setPermissions(0777);
    const mode_t before = umask(027);
    EXPECT_TRUE(file->commit());
    umask(before);
    EXPECT_EQ(permissionsOf(m_folder / "target"), 0640U);
}

TEST_P(EachDraft, StaysItsOwnersAloneWhereThatIsWanted)
{
    const mode_t before = umask(0);
    auto file = create("target");
    ASSERT_TRUE(file);
    file->setPermissions(0600);
    EXPECT_TRUE(file->commit());
    umask(before);
    EXPECT_EQ(permissionsOf(m_folder / "target"), 0600U);
}

TEST(AtomicFile, HasNoNameThatAKilledProgramWouldLeave)
{
    const TemporaryDirectory folder;
    const auto file = AtomicFile::create(folder / "target");
    ASSERT_TRUE(file);
    const bool canBeUnnamed = file->draft().native().starts_with("/proc/");
    EXPECT_EQ(entryCount(folder.path()), canBeUnnamed ? 0U : 1U);
}

TEST_P(EachDraft, AppearsOnlyWhenCommitted)
{
    writeFile(m_folder / "target", "old");
    Result<AtomicFile> file = create("target");
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->append(bytesOf("new ")));
    ASSERT_TRUE(file->append(bytesOf("content")));
    EXPECT_EQ(readFile(m_folder / "target"), "old");
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(readFile(m_folder / "target"), "new content");
    EXPECT_EQ(entryCount(m_folder.path()), 1U);
}

TEST_P(EachDraft, LeavesNothingWhenDropped)
{
    {
        Result<AtomicFile> file = create("target");
        ASSERT_TRUE(file);
        ASSERT_TRUE(file->append(bytesOf("half")));
    }
    EXPECT_EQ(entryCount(m_folder.path()), 0U);
}

TEST(AtomicFile, TakesTheLongestNameThereIs)
{
    const TemporaryDirectory folder;
    const std::string name = std::string(250, 'n') + ".webp";
    ASSERT_TRUE(writeFileAtomically(folder / name, bytesOf("content")));
    EXPECT_EQ(readFile(folder / name), "content");
}

TEST(AtomicFile, GivesTheFileThePermissionsOfANewOne)
{
    const TemporaryDirectory folder;
    const mode_t before = umask(027);
    ASSERT_TRUE(writeFileAtomically(folder / "target", {}));
    umask(before);
    struct stat status;
    ASSERT_EQ(::stat((folder / "target").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST(AtomicFile, FailsInAMissingFolder)
{
    const TemporaryDirectory folder;
    const Result<AtomicFile> file = AtomicFile::create(folder / "missing" / "a.ppm");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().description, "a.ppm could not be written: No such file or directory");
}

TEST(AtomicFile, KeepsTheOldFileWhenTheDiskIsFull)
{
    const TemporaryDirectory folder;
    writeFile(folder / "target", "old");
    {
        const FileSizeLimit full(50'000);
        const Status written = writeFileAtomically(folder / "target", bytesOf(std::string(100'000, 'x')));
        ASSERT_FALSE(written);
        EXPECT_EQ(written.error().description, "target could not be written: File too large");
    }
    EXPECT_EQ(readFile(folder / "target"), "old");
    EXPECT_EQ(entryCount(folder.path()), 1U);
}

TEST(AtomicFile, TakesInAnotherFileOfAnyLength)
{
    const TemporaryDirectory folder;
    const std::string content(3'000'000, 'x');
    writeFile(folder / "from", content);
    const auto from = openRegularFile(folder / "from");
    ASSERT_TRUE(from);
    Result<AtomicFile> file = AtomicFile::create(folder / "to");
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->append(bytesOf("before ")));
    ASSERT_TRUE(file->appendFile(from->get()));
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(readFile(folder / "to"), "before " + content);
}

TEST(AtomicFile, SaysWhyAnotherFileDoesNotFit)
{
    const TemporaryDirectory folder;
    writeFile(folder / "from", std::string(100'000, 'x'));
    const auto from = openRegularFile(folder / "from");
    ASSERT_TRUE(from);
    {
        Result<AtomicFile> file = AtomicFile::create(folder / "to");
        ASSERT_TRUE(file);
        const FileSizeLimit full(50'000);
        const Status copied = file->appendFile(from->get());
        ASSERT_FALSE(copied);
        EXPECT_EQ(copied.error().description, "to could not be written: File too large");
    }
    EXPECT_EQ(entryCount(folder.path()), 1U);
}

TEST_P(EachDraft, KeepsAnExistingTargetWhenToldToAndMayTryAgain)
{
    Result<AtomicFile> file = create("to");
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->append(bytesOf("new")));
    writeFile(m_folder / "to", "appeared meanwhile");
    const Status kept = file->commit(ExistingFile::keep);
    ASSERT_FALSE(kept);
    EXPECT_TRUE(file->isTaken());
    EXPECT_EQ(kept.error().description, "to could not be written: File exists");
    EXPECT_EQ(readFile(m_folder / "to"), "appeared meanwhile");
    EXPECT_EQ(readFile(file->draft()), "new");
    ASSERT_TRUE(file->commit(ExistingFile::replace));
    EXPECT_EQ(readFile(m_folder / "to"), "new");
    EXPECT_EQ(entryCount(m_folder.path()), 1U);

    Result<AtomicFile> other = create("free");
    ASSERT_TRUE(other);
    EXPECT_TRUE(other->commit(ExistingFile::keep));
    EXPECT_FALSE(other->isTaken());
}

TEST(AtomicFile, DoesNotReplaceAFolder)
{
    const TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "target");
    EXPECT_FALSE(writeFileAtomically(folder / "target", bytesOf("x")));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "target"));
    EXPECT_EQ(entryCount(folder.path()), 1U);
}

class StaleDrafts : public testing::Test
{
protected:
    // A file of this name that nobody has touched for so long.
    void leave(const std::string& name, std::chrono::minutes age) const
    {
        writeFile(m_folder / name, "half");
        std::filesystem::last_write_time(m_folder / name,
                                         std::filesystem::file_time_type::clock::now() - age);
    }

    bool isLeft(const std::string& name) const { return std::filesystem::exists(m_folder / name); }

    const TemporaryDirectory m_folder;
};

TEST_F(StaleDrafts, AreRemovedWhenAnHourOldAndNotWhileTheyMayBeWritten)
{
    Result<AtomicFile> file = AtomicFile::create(m_folder / "target", Draft::named);
    ASSERT_TRUE(file);
    const std::filesystem::path draft = std::filesystem::directory_iterator(m_folder.path())->path();
    leave(draft.filename().native() + "-old", std::chrono::minutes(61));
    leave(draft.filename().native() + "-young", std::chrono::minutes(59));
    removeStaleDrafts(m_folder.path());
    EXPECT_FALSE(isLeft(draft.filename().native() + "-old"));
    EXPECT_TRUE(isLeft(draft.filename().native() + "-young"));
    EXPECT_TRUE(file->commit());
}

TEST_F(StaleDrafts, AreNoneOfTheUsersFilesOrFolders)
{
    leave("lumora-holiday.jpg", std::chrono::hours(2));
    leave(".hidden", std::chrono::hours(2));
    std::filesystem::create_directory(m_folder / ".lumora-folder");
    std::filesystem::last_write_time(m_folder / ".lumora-folder",
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(2));
    removeStaleDrafts(m_folder.path());
    removeStaleDrafts(m_folder / "missing");
    EXPECT_TRUE(isLeft("lumora-holiday.jpg"));
    EXPECT_TRUE(isLeft(".hidden"));
    EXPECT_TRUE(isLeft(".lumora-folder"));
}

} // namespace
} // namespace lumora
