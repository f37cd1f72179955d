// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What stands in the way of the totals: bad files, full and closed disks.
#include "tests/model/stats_store_harness.h"
#include "tests/support/file_size_limit.h"

#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

using test::failure;
using test::sevenKeys;
using test::StatsStoreTest;
using test::success;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST_F(StatsStoreTest, ABadFileStaysUntilTheNextSave)
{
    loaded("{broken");
    EXPECT_EQ(test::readFile(m_file), "{broken");
    open()->record(failure());
    EXPECT_EQ(open()->stats().filesProcessed, 1);
}

TEST_F(StatsStoreTest, AHugeFileIsNotTakenIntoMemory)
{
    loaded("{}");
    fs::resize_file(m_file, std::uintmax_t{1} << 40);
    EXPECT_EQ(open()->stats(), LifetimeStats());
}

TEST_F(StatsStoreTest, AFolderOrAPipeInPlaceOfTheFileHoldsNothingUp)
{
    fs::create_directories(m_file);
    auto store = open();
    store->record(failure());
    EXPECT_EQ(store->stats().filesProcessed, 1);
    fs::remove(m_file);
    ASSERT_EQ(mkfifo(m_file.c_str(), 0600), 0);
    EXPECT_EQ(open()->stats(), LifetimeStats());
}

TEST_F(StatsStoreTest, AFolderThatTakesNoFileKeepsTheTotalsInMemory)
{
    test::writeFile(m_directory / "Lumora", "a file where the folder should be");
    const auto store = open();
    store->record(success(3, 1));
    store->record(success(3, 1));
    EXPECT_EQ(store->stats().netBytesSaved, 4);
    EXPECT_EQ(test::readFile(m_directory / "Lumora"), "a file where the folder should be");
}

TEST_F(StatsStoreTest, ASaveThatFailedIsMadeUpForByTheNext)
{
    const auto store = open();
    store->record(failure());
    fs::remove_all(m_file.parent_path()); // nothing can be written now
    store->record(failure());
    fs::create_directories(m_file.parent_path());
    store->record(failure());
    EXPECT_EQ(open()->stats().filesProcessed, 3);
}

TEST_F(StatsStoreTest, NoDraftIsLeftBeside)
{
    const auto store = open();
    for (int i = 0; i < 20; ++i)
        store->record(failure());
    EXPECT_EQ(std::distance(fs::directory_iterator(m_file.parent_path()), {}), 1);
}

TEST_F(StatsStoreTest, ADraftOfAKilledProgramIsClearedAwayAndAFreshOneIsNot)
{
    const fs::path stale = m_file.parent_path() / ".lumora-stale";
    const fs::path fresh = m_file.parent_path() / ".lumora-fresh";
    fs::create_directories(m_file.parent_path());
    test::writeFile(stale, "{");
    test::writeFile(fresh, "{");
    fs::last_write_time(stale, fs::file_time_type::clock::now() - 2h);
    open();
    EXPECT_FALSE(fs::exists(stale));
    EXPECT_TRUE(fs::exists(fresh));
}

TEST_F(StatsStoreTest, AFullDiskKeepsTheOldFileAndTheTotalsInMemory)
{
    const auto store = open();
    store->record(failure());
    {
        const test::FileSizeLimit full(0);
        store->record(failure());
    }
    EXPECT_EQ(store->stats().filesProcessed, 2);
    EXPECT_EQ(open()->stats().filesProcessed, 1);
    EXPECT_EQ(std::distance(fs::directory_iterator(m_file.parent_path()), {}), 1);
}

// Permissions bind everybody but the superuser, so a test that runs as such becomes nobody for a while.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (geteuid() == 0) {
            EXPECT_EQ(seteuid(65534), 0);
        }
    }
    ~OrdinaryUser() { EXPECT_EQ(seteuid(getuid()), 0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
};

TEST_F(StatsStoreTest, AnUnreadableFileCountsAsNone)
{
    EXPECT_EQ(loaded("{" + sevenKeys + "}").filesProcessed, 1);
    fs::permissions(m_file, fs::perms::none);
    const OrdinaryUser user;
    EXPECT_EQ(open()->stats(), LifetimeStats());
}

TEST_F(StatsStoreTest, AReadOnlyFolderKeepsTheOldFileAndTheTotalsInMemory)
{
    const auto store = open();
    store->record(failure());
    fs::permissions(m_file.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
    {
        const OrdinaryUser user;
        store->record(failure());
    }
    fs::permissions(m_file.parent_path(), fs::perms::owner_all);
    EXPECT_EQ(store->stats().filesProcessed, 2);
    EXPECT_EQ(open()->stats().filesProcessed, 1);
}

} // namespace
} // namespace lumora
