// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/trash.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace lumora {
namespace {

using test::readFile;
using test::writeFile;

// GIO looks for the user's folders once a process: one home for all tests of this program, set before the
// first.
class Home : public testing::Environment
{
public:
    void SetUp() override
    {
        m_home.emplace();
        setenv("HOME", m_home->path().c_str(), 1);
        setenv("XDG_DATA_HOME", data().c_str(), 1);
    }
    void TearDown() override { m_home.reset(); }

    std::filesystem::path data() const { return *m_home / "data"; }
    std::filesystem::path operator/(const std::filesystem::path& name) const { return *m_home / name; }

private:
    std::optional<test::TemporaryDirectory> m_home;
};

// NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the test framework deletes it
const Home& home = *static_cast<Home*>(testing::AddGlobalTestEnvironment(new Home));

class MoveToTrash : public testing::Test
{
protected:
    void SetUp() override { std::filesystem::remove_all(home.data()); }
};

TEST_F(MoveToTrash, PutsTheFileIntoTheUsersTrash)
{
    writeFile(home / "my \xC3\xA9 photo.jpg", "pixels");
    const Status moved = moveToTrash(home / "my \xC3\xA9 photo.jpg");
    ASSERT_TRUE(moved) << moved.error().description;
    EXPECT_FALSE(std::filesystem::exists(home / "my \xC3\xA9 photo.jpg"));
    EXPECT_EQ(readFile(home.data() / "Trash" / "files" / "my \xC3\xA9 photo.jpg"), "pixels");
    EXPECT_NE(readFile(home.data() / "Trash" / "info" / "my \xC3\xA9 photo.jpg.trashinfo")
                  .find("my%20%C3%A9%20photo"),
              std::string::npos);
}

TEST_F(MoveToTrash, KeepsFilesOfTheSameNameApart)
{
    for (const char* content : {"first", "second"}) {
        writeFile(home / "a.jpg", content);
        ASSERT_TRUE(moveToTrash(home / "a.jpg"));
    }
    const std::filesystem::directory_iterator files(home.data() / "Trash" / "files");
    EXPECT_EQ(std::distance(files, {}), 2);
}

TEST_F(MoveToTrash, TakesTheLinkAndNotItsTarget)
{
    writeFile(home / "target.jpg", "pixels");
    std::filesystem::create_symlink("target.jpg", home / "link.jpg");
    ASSERT_TRUE(moveToTrash(home / "link.jpg"));
    EXPECT_FALSE(std::filesystem::is_symlink(home / "link.jpg"));
    EXPECT_EQ(readFile(home / "target.jpg"), "pixels");
}

TEST_F(MoveToTrash, LeavesTheFileWhereThereIsNoTrash)
{
    std::filesystem::create_directory(home.data());
    writeFile(home.data() / "Trash", "in the way of the folder");
    writeFile(home / "a.jpg", "pixels");
    const Status moved = moveToTrash(home / "a.jpg");
    ASSERT_FALSE(moved);
    EXPECT_TRUE(moved.error().description.starts_with("a.jpg could not be moved to the Trash: "))
        << moved.error().description;
    EXPECT_EQ(readFile(home / "a.jpg"), "pixels");
}

TEST_F(MoveToTrash, TellsWhereEachFileOfOneNameWent)
{
    for (const char* content : {"first", "second", "third"}) {
        writeFile(home / "a.tar.jpg", content);
        const auto stamp = linkStamp(home / "a.tar.jpg");
        ASSERT_TRUE(moveToTrash(home / "a.tar.jpg"));
        const auto place = placeInTrash(home / "a.tar.jpg", *stamp);
        ASSERT_TRUE(place);
        EXPECT_EQ(readFile(*place), content);
    }
    EXPECT_EQ(placeInTrash(home / "a.tar.jpg", FileStamp{}), std::nullopt);
}

TEST_F(MoveToTrash, IsTakenBackToAFreePlaceOnly)
{
    writeFile(home / "a.jpg", "pixels");
    const auto stamp = linkStamp(home / "a.jpg");
    ASSERT_TRUE(moveToTrash(home / "a.jpg"));
    const auto place = placeInTrash(home / "a.jpg", *stamp);
    ASSERT_TRUE(place);
    writeFile(home / "a.jpg", "another");
    const auto refused = takeFromTrash(*place, home / "a.jpg");
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().isTaken);
    EXPECT_EQ(readFile(home / "a.jpg"), "another");
    std::filesystem::remove(home / "a.jpg");
    EXPECT_TRUE(takeFromTrash(*place, home / "a.jpg"));
    EXPECT_EQ(fileStamp(home / "a.jpg"), stamp);
    EXPECT_TRUE(std::filesystem::is_empty(home.data() / "Trash" / "files"));
    EXPECT_TRUE(std::filesystem::is_empty(home.data() / "Trash" / "info"));
    const auto gone = takeFromTrash(*place, home / "b.jpg");
    ASSERT_FALSE(gone);
    EXPECT_FALSE(gone.error().isTaken);
}

TEST_F(MoveToTrash, KeepsWhatStaysInItsPlace)
{
    writeFile(home / "k \xFF.jpg", "pixels");
    const auto kept = keepInTrash(home / "k \xFF.jpg");
    ASSERT_TRUE(kept) << kept.error().description;
    EXPECT_EQ(readFile(home / "k \xFF.jpg"), "pixels");
    EXPECT_EQ(*kept, home.data() / "Trash" / "files" / "k \xFF.jpg");
    writeFile(home / "new", "new");
    std::filesystem::rename(home / "new", home / "k \xFF.jpg");
    EXPECT_EQ(readFile(*kept), "pixels");
    const std::string info = readFile(home.data() / "Trash" / "info" / "k \xFF.jpg.trashinfo");
    EXPECT_TRUE(info.starts_with("[Trash Info]\nPath=/")) << info;
    EXPECT_NE(info.find("/k%20%FF.jpg\nDeletionDate=20"), std::string::npos) << info;
    const auto second = keepInTrash(home / "k \xFF.jpg");
    ASSERT_TRUE(second);
    EXPECT_EQ(*second, home.data() / "Trash" / "files" / "k \xFF.2.jpg");
    removeFromTrash(*second);
    EXPECT_FALSE(std::filesystem::exists(*second));
    EXPECT_EQ(readFile(home / "k \xFF.jpg"), "new");
}

TEST_F(MoveToTrash, KeepsNoFolderAndNothingWithoutATrash)
{
    std::filesystem::create_directory(home / "folder");
    EXPECT_FALSE(keepInTrash(home / "folder"));
    EXPECT_TRUE(std::filesystem::is_empty(home.data() / "Trash" / "info"));
    std::filesystem::remove_all(home.data() / "Trash");
    writeFile(home.data() / "Trash", "in the way of the folder");
    writeFile(home / "a.jpg", "pixels");
    EXPECT_FALSE(keepInTrash(home / "a.jpg"));
    EXPECT_EQ(readFile(home / "a.jpg"), "pixels");
}

TEST_F(MoveToTrash, FailsForAMissingFile)
{
    EXPECT_FALSE(moveToTrash(home / "missing.jpg"));
}

} // namespace
} // namespace lumora
