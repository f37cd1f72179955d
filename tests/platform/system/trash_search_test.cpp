// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/trash_search.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <unistd.h>

namespace lumora {
namespace {

using std::filesystem::path;

class FindInTrash : public testing::Test
{
protected:
    FindInTrash()
    {
        const char* const data = std::getenv("XDG_DATA_HOME");
        if (data) m_before = data;
        setenv("XDG_DATA_HOME", m_folder.path().c_str(), 1);
    }
    ~FindInTrash() override
    {
        if (m_before)
            setenv("XDG_DATA_HOME", m_before->c_str(), 1);
        else
            unsetenv("XDG_DATA_HOME");
    }

    path home() const { return m_folder / "Trash"; }

    // As desktops throw a file away.
    static path throwAway(const path& trash, const std::string& name, const std::string& from,
                          const char* date)
    {
        std::filesystem::create_directories(trash / "files");
        std::filesystem::create_directories(trash / "info");
        test::writeFile(trash / "files" / name, "x");
        test::writeFile(trash / "info" / (name + ".trashinfo"),
                        "[Trash Info]\nPath=" + from + "\nDeletionDate=" + date + "\n");
        return trash / "files" / name;
    }

    test::TemporaryDirectory m_folder;
    std::optional<std::string> m_before;
};

constexpr const char* day = "2026-01-14T09:12:44";

TEST_F(FindInTrash, FindsAFileByThePlaceThatItCameFrom)
{
    throwAway(home(), "a.jpg", "/elsewhere/a.jpg", day);
    const path file = throwAway(home(), "a.2.jpg", "/photos/a.jpg", day);
    EXPECT_EQ(findInTrash("/photos/a.jpg"), file);
    EXPECT_EQ(findInTrash("/photos/./b/../a.jpg"), file);
    EXPECT_EQ(findInTrash("/photos/b.jpg"), std::nullopt);
}

TEST_F(FindInTrash, ReadsNamesAsBytes)
{
    const path file = throwAway(home(), "x", "/photos/b%FF%20100%25.jpg", day);
    EXPECT_EQ(findInTrash("/photos/b\xFF 100%.jpg"), file);
}

TEST_F(FindInTrash, TakesTheOneThatWasThrownAwayLast)
{
    throwAway(home(), "a", "/photos/a.jpg", "2026-01-14T09:12:44");
    const path last = throwAway(home(), "b", "/photos/a.jpg", "2026-02-01T00:00:00");
    throwAway(home(), "c", "/photos/a.jpg", "2025-12-31T23:59:59");
    EXPECT_EQ(findInTrash("/photos/a.jpg"), last);
}

TEST_F(FindInTrash, PassesOverNotesWithoutTheirFile)
{
    std::filesystem::remove(throwAway(home(), "a", "/photos/a.jpg", day));
    EXPECT_EQ(findInTrash("/photos/a.jpg"), std::nullopt);
}

TEST_F(FindInTrash, IsNoFailureWithoutATrash)
{
    EXPECT_EQ(findInTrash("/photos/a.jpg"), std::nullopt);
}

TEST_F(FindInTrash, ReadsATrashOnceForManyFiles)
{
    const path first = throwAway(home(), "a.jpg", "/photos/a.jpg", day);
    const path second = throwAway(home(), "b.jpg", "/photos/b.jpg", day);
    TrashContents trash;
    EXPECT_EQ(trash.find("/photos/a.jpg"), first);
    EXPECT_EQ(trash.find("/photos/b.jpg"), second);
    throwAway(home(), "c.jpg", "/photos/c.jpg", day);
    EXPECT_EQ(trash.find("/photos/c.jpg"), std::nullopt);
    std::filesystem::remove(second);
    EXPECT_EQ(trash.find("/photos/b.jpg"), std::nullopt);
}

} // namespace
} // namespace lumora
