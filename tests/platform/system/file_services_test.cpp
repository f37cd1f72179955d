// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/file_services.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>

namespace lumora {
namespace {

using test::readFile;
using test::TemporaryDirectory;
using test::writeFile;

TEST(FileServices, TellsPermissionsAsChmodTakesThem)
{
    const test::TemporaryDirectory folder;
    test::writeFile(folder / "file", "");
    ASSERT_EQ(::chmod((folder / "file").c_str(), 0604), 0);
    EXPECT_EQ(filePermissions(folder / "file"), 0604U);
    EXPECT_EQ(filePermissions(folder / "missing"), std::nullopt);
}

TEST(FileSize, IsThatOfTheFileThePathLeadsTo)
{
    const TemporaryDirectory folder;
    writeFile(folder / "five", "12345");
    std::filesystem::create_symlink("five", folder / "link");
    EXPECT_EQ(fileSize(folder / "five"), 5);
    EXPECT_EQ(fileSize(folder / "link"), 5);
}

TEST(FileSize, IsZeroForAMissingFileAndForAFolder)
{
    const TemporaryDirectory folder;
    EXPECT_EQ(fileSize(folder / "missing"), 0);
    EXPECT_EQ(fileSize(folder.path()), 0);
}

TEST(FileExists, CountsEverythingThatTakesThePath)
{
    const TemporaryDirectory folder;
    writeFile(folder / "file", "");
    std::filesystem::create_symlink("nowhere", folder / "dangling");
    EXPECT_TRUE(fileExists(folder / "file"));
    EXPECT_TRUE(fileExists(folder / "dangling"));
    EXPECT_TRUE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(folder / "nowhere"));
}

TEST(IsExecutableFile, WantsARegularFileWithTheRightToRunIt)
{
    const TemporaryDirectory folder;
    writeFile(folder / "tool", "");
    EXPECT_FALSE(isExecutableFile(folder / "tool"));
    std::filesystem::permissions(folder / "tool", std::filesystem::perms::owner_all);
    std::filesystem::create_symlink("tool", folder / "link");
    EXPECT_TRUE(isExecutableFile(folder / "tool"));
    EXPECT_TRUE(isExecutableFile(folder / "link"));
    EXPECT_FALSE(isExecutableFile(folder.path()));
    EXPECT_FALSE(isExecutableFile(folder / "missing"));
}

TEST(RemoveFile, RemovesALinkAndNotItsTarget)
{
    const TemporaryDirectory folder;
    writeFile(folder / "file", "kept");
    std::filesystem::create_symlink("file", folder / "link");
    EXPECT_TRUE(removeFile(folder / "link"));
    EXPECT_FALSE(fileExists(folder / "link"));
    EXPECT_EQ(readFile(folder / "file"), "kept");
}

TEST(RemoveFile, SaysWhichFileAndWhy)
{
    const TemporaryDirectory folder;
    const Status removed = removeFile(folder / "my photo \xFF.webp");
    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.error().description,
              "my photo \xFF.webp could not be removed: No such file or directory");
}

TEST(RemoveFile, RefusesAFolderWithAllItHolds)
{
    const TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "a.webp");
    writeFile(folder / "a.webp" / "inside", "kept");
    const Status removed = removeFile(folder / "a.webp");
    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.error().description, "a.webp could not be removed: Is a directory");
    EXPECT_EQ(readFile(folder / "a.webp" / "inside"), "kept");
}

TEST(CheckReplaceable, RefusesFoldersAlone)
{
    const TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "a.webp");
    std::filesystem::create_directory_symlink(folder / "a.webp", folder / "link");
    writeFile(folder / "file", "");
    EXPECT_TRUE(checkReplaceable(folder / "missing"));
    EXPECT_TRUE(checkReplaceable(folder / "file"));
    EXPECT_TRUE(checkReplaceable(folder / "link"));
    const Status refused = checkReplaceable(folder / "a.webp");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().description, "a.webp could not be written: Is a directory");
}

TEST(ModificationDate, IsCarriedOverToTheNanosecond)
{
    const TemporaryDirectory folder;
    writeFile(folder / "file", "");
    const timespec date{1'234'567'890, 123'456'789};
    ASSERT_TRUE(setModificationDate(folder / "file", date));
    const auto read = modificationDate(folder / "file");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->tv_sec, date.tv_sec);
    EXPECT_EQ(read->tv_nsec, date.tv_nsec);
}

TEST(ModificationDate, ChangesAlone)
{
    const TemporaryDirectory folder;
    writeFile(folder / "file", "");
    struct stat before;
    ASSERT_EQ(::stat((folder / "file").c_str(), &before), 0);
    ASSERT_TRUE(setModificationDate(folder / "file", {1, 0}));
    struct stat after;
    ASSERT_EQ(::stat((folder / "file").c_str(), &after), 0);
    EXPECT_EQ(after.st_atim.tv_sec, before.st_atim.tv_sec);
    EXPECT_EQ(after.st_atim.tv_nsec, before.st_atim.tv_nsec);
    EXPECT_EQ(after.st_mode, before.st_mode);
}

TEST(ModificationDate, IsAbsentForAMissingFile)
{
    const TemporaryDirectory folder;
    EXPECT_FALSE(modificationDate(folder / "missing"));
    const Status dated = setModificationDate(folder / "missing", {1, 0});
    ASSERT_FALSE(dated);
    EXPECT_EQ(dated.error().description, "missing could not be dated: No such file or directory");
}

TEST(TemporaryDirectoryService, FollowsTheEnvironmentWhileItNamesAFolder)
{
    const TemporaryDirectory folder;
    const char* before = std::getenv("TMPDIR");
    const std::string restored = before ? before : "";
    setenv("TMPDIR", folder.path().c_str(), 1);
    EXPECT_EQ(temporaryDirectory(), folder.path());
    setenv("TMPDIR", (folder / "missing").c_str(), 1);
    EXPECT_EQ(temporaryDirectory(), "/tmp");
    before ? setenv("TMPDIR", restored.c_str(), 1) : unsetenv("TMPDIR");
}

} // namespace
} // namespace lumora
