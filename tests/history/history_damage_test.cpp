// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/history/history_harness.h"

#include "tests/support/file_size_limit.h"

#include <sqlite3.h>
#include <unistd.h>

#include <fstream>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::HistoryTest;
using test::readFile;
using test::writeFile;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class HistoryDamage : public HistoryTest
{
protected:
    fs::path aside(const std::string& name) const { return file().parent_path() / name; }

    void change(const char* sql) const
    {
        sqlite3* database = nullptr;
        ASSERT_EQ(sqlite3_open(file().c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
    }

    void expectANewOneThatWorks(const std::string& complaint)
    {
        remember(1);
        EXPECT_THAT(m_complaints, ElementsAre(HasSubstr(complaint)));
        EXPECT_EQ(rowsOfAll(), 1u);
        EXPECT_THAT(m_complaints, SizeIs(1));
    }
};

TEST_F(HistoryDamage, WhatIsNoDatabaseIsSetAside)
{
    fs::create_directories(file().parent_path());
    const std::string content(5000, 'x');
    writeFile(file(), content);
    expectANewOneThatWorks("the history is damaged; it is kept as " +
                           aside("history-damaged-1.sqlite").string());
    EXPECT_EQ(readFile(aside("history-damaged-1.sqlite")), content);
}

TEST_F(HistoryDamage, EachThatIsSetAsideIsKept)
{
    fs::create_directories(file().parent_path());
    for (const char* content : {"first", "second"}) {
        fs::remove(file().native() + "-wal"); // it would heal the file
        writeFile(file(), std::string(content) + std::string(1000, ' '));
        remember(1);
    }
    EXPECT_THAT(readFile(aside("history-damaged-1.sqlite")), StartsWith("first"));
    EXPECT_THAT(readFile(aside("history-damaged-2.sqlite")), StartsWith("second"));
    EXPECT_THAT(m_complaints, SizeIs(2));
}

TEST_F(HistoryDamage, AFolderInItsPlaceIsSetAside)
{
    fs::create_directories(file() / "inside");
    expectANewOneThatWorks("the history is damaged");
    EXPECT_TRUE(fs::exists(aside("history-damaged-1.sqlite") / "inside"));
}

TEST_F(HistoryDamage, TablesOfSomebodyElseAreSetAside)
{
    fs::create_directories(file().parent_path());
    change("CREATE TABLE notes(text)");
    expectANewOneThatWorks("the history is damaged");
}

TEST_F(HistoryDamage, DamageInTheMiddleIsFoundWhenItIsMet)
{
    remember(300);
    change("PRAGMA wal_checkpoint(TRUNCATE)");
    {
        const auto size = static_cast<std::streamoff>(fs::file_size(file()));
        std::fstream pages(file(), std::ios::in | std::ios::out | std::ios::binary);
        pages.seekp(4096);
        pages << std::string(static_cast<std::size_t>(size - 4096), '\x5A');
    }
    expectANewOneThatWorks("the history is damaged");
}

TEST_F(HistoryDamage, AnEmptyFileIsAHistoryWithoutRows)
{
    fs::create_directories(file().parent_path());
    writeFile(file(), "");
    remember(2);
    EXPECT_EQ(rowsOfAll(), 2u);
    EXPECT_THAT(m_complaints, IsEmpty());
}

TEST_F(HistoryDamage, GoesOnFromBeforeFoldersWereRemembered)
{
    remember(1);
    change("DROP TABLE folders");
    FileRecord file = row("/in/next.jpg");
    file.trace.madeFolders = {"/out/a", "/out/a/b"};
    {
        const auto history = open();
        history->add(history->begin("test", "webp"), file);
    }
    const auto history = open();
    const auto files = history->filesOf(2);
    ASSERT_TRUE(files);
    EXPECT_THAT(history->foldersMadeWith(*files), testing::ElementsAre("/out/a", "/out/a/b"));
    EXPECT_THAT(history->foldersMadeWith(history->filesOf(1).value()), testing::IsEmpty());
    EXPECT_THAT(m_complaints, testing::IsEmpty());
}

TEST_F(HistoryDamage, ThatOfANewerVersionIsSetAsideWhole)
{
    remember(3);
    change("PRAGMA user_version = 99");
    expectANewOneThatWorks("the history is that of a newer version; it is kept as " +
                           aside("history-newer-1.sqlite").string());
    fs::remove(file());
    fs::remove(file().native() + "-wal");
    fs::rename(aside("history-newer-1.sqlite"), file());
    change("PRAGMA user_version = 1");
    EXPECT_EQ(rowsOfAll(), 3u);
}

TEST_F(HistoryDamage, AFolderThatCannotBeMadeCostsOneLineAndTheRows)
{
    writeFile(data(), "in the way of the folder");
    {
        const auto history = open();
        const auto batch = history->begin("test", "");
        history->add(batch, row("/in/a.jpg"));
        EXPECT_EQ(history->batches(), std::nullopt);
        history->add(batch, row("/in/b.jpg"));
        EXPECT_FALSE(history->isOptimized(data()));
    }
    EXPECT_THAT(m_complaints, ElementsAre(StartsWith("the history cannot be kept: ")));
    EXPECT_EQ(readFile(data()), "in the way of the folder");
}

// Permissions bind everybody but the superuser, as whom tests may run.
class OrdinaryUser
{
public:
    OrdinaryUser() : m_isSuperuser(geteuid() == 0) { become(65534); }
    ~OrdinaryUser() { become(0); }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    void become(uid_t user) const { EXPECT_TRUE(!m_isSuperuser || seteuid(user) == 0); }

    bool m_isSuperuser;
};

TEST_F(HistoryDamage, AReadOnlyOneCostsOneLineAndStaysAsItIs)
{
    remember(3);
    constexpr auto readable = fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read;
    constexpr auto enterable =
        readable | fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec;
    for (const auto& entry : fs::directory_iterator(file().parent_path()))
        fs::permissions(entry.path(), readable);
    fs::permissions(m_folder.path(), enterable);
    fs::permissions(data(), enterable);
    fs::permissions(file().parent_path(), enterable);
    {
        const OrdinaryUser user;
        remember(2);
        EXPECT_THAT(m_complaints, ElementsAre(StartsWith("the history cannot be kept: ")));
    }
    for (const fs::path& folder : {m_folder.path(), data(), file().parent_path()})
        fs::permissions(folder, fs::perms::owner_all);
    for (const auto& entry : fs::directory_iterator(file().parent_path()))
        fs::permissions(entry.path(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(rowsOfAll(), 3u);
    EXPECT_THAT(m_complaints, SizeIs(1));
}

TEST_F(HistoryDamage, AFullDiskCostsOneLineAndRowsButNotThoseBefore)
{
    remember(10);
    {
        const test::FileSizeLimit full(8192);
        remember(2000);
        EXPECT_THAT(m_complaints, ElementsAre(AllOf(StartsWith("the history cannot be kept: "))));
    }
    EXPECT_EQ(rowsOfAll(), 10u);
    remember(5);
    EXPECT_EQ(rowsOfAll(), 15u);
}

TEST_F(HistoryDamage, WithoutRoomForAnythingNothingElseHappens)
{
    {
        const test::FileSizeLimit full(0);
        remember(10);
    }
    EXPECT_THAT(m_complaints, SizeIs(1));
    m_complaints.clear();
    remember(5);
    EXPECT_EQ(rowsOfAll(), 5u);
    EXPECT_THAT(m_complaints, IsEmpty());
}

} // namespace
} // namespace lumora
