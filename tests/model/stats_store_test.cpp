// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/stats_store.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <limits>

namespace lumora {
namespace {

using test::TemporaryDirectory;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr std::int64_t maximum = std::numeric_limits<std::int64_t>::max();

ProcessingResult success(std::int64_t before, std::int64_t after)
{
    return {"/in.jpg", "/out.webp", before, after, "Optimized", true};
}
ProcessingResult failure()
{
    return {"/in.jpg", std::nullopt, 0, 0, "The image could not be read.", false};
}

class StatsStoreTest : public ::testing::Test
{
protected:
    TemporaryDirectory m_directory;
    const fs::path m_file = m_directory / "Lumora/stats.json";
    LifetimeStats::Clock::time_point m_time{1'700'000'000s};

    std::unique_ptr<StatsStore> open()
    {
        return std::make_unique<StatsStore>(m_directory.path(), [this] { return m_time; });
    }
    LifetimeStats loaded(const std::string& json)
    {
        fs::create_directories(m_file.parent_path());
        test::writeFile(m_file, json);
        return open()->stats();
    }
};

const std::string sevenKeys = R"("filesProcessed":1,"filesSucceeded":1,"originalBytes":10,"outputBytes":4,)"
                              R"("grossBytesSaved":6,"netBytesSaved":6,"largestSingleSaveBytes":6)";

TEST_F(StatsStoreTest, FirstLaunchMakesTheFolderAndNoFile)
{
    const auto store = open();
    EXPECT_EQ(store->stats(), LifetimeStats());
    EXPECT_TRUE(fs::is_directory(m_file.parent_path()));
    EXPECT_FALSE(fs::exists(m_file));
}

TEST_F(StatsStoreTest, SuccessesAndFailuresAddUp)
{
    const auto store = open();
    store->record(success(1000, 600));
    LifetimeStats expected{1, 1, 1000, 600, 400, 400, 400, m_time};
    EXPECT_EQ(store->stats(), expected);

    m_time += 60s;
    store->record(success(500, 700));
    expected = {2, 2, 1500, 1300, 400, 200, 400, m_time};
    EXPECT_EQ(store->stats(), expected);

    m_time += 60s;
    store->record(failure());
    expected.filesProcessed = 3;
    EXPECT_EQ(store->stats(), expected);
    EXPECT_EQ(open()->stats(), expected);
}

TEST_F(StatsStoreTest, EqualSizesMoveOnlyCountsBytesAndDate)
{
    const auto store = open();
    store->record(success(1000, 600));
    m_time += 5s;
    store->record(success(50, 50));
    EXPECT_EQ(store->stats(), (LifetimeStats{2, 2, 1050, 650, 400, 400, 400, m_time}));
}

TEST_F(StatsStoreTest, FilesThatOnlyGrewGiveANegativeNet)
{
    const auto store = open();
    store->record(success(10, 15));
    store->record(success(10, 30));
    EXPECT_EQ(store->stats().netBytesSaved, -25);
    EXPECT_EQ(store->stats().grossBytesSaved, 0);
    EXPECT_EQ(store->stats().largestSingleSaveBytes, 0);
}

TEST_F(StatsStoreTest, TheFileIsWordedExactly)
{
    const auto store = open();
    store->record(success(1000, 600));
    EXPECT_EQ(test::readFile(m_file), "{\n"
                                      "  \"filesProcessed\" : 1,\n"
                                      "  \"filesSucceeded\" : 1,\n"
                                      "  \"grossBytesSaved\" : 400,\n"
                                      "  \"largestSingleSaveBytes\" : 400,\n"
                                      "  \"lastProcessedAt\" : \"2023-11-14T22:13:20Z\",\n"
                                      "  \"netBytesSaved\" : 400,\n"
                                      "  \"originalBytes\" : 1000,\n"
                                      "  \"outputBytes\" : 600\n"
                                      "}");
}

TEST_F(StatsStoreTest, ResetLeavesSevenZerosAndNoDate)
{
    const auto store = open();
    store->record(success(1000, 600));
    store->reset();
    EXPECT_EQ(store->stats(), LifetimeStats());
    const std::string text = test::readFile(m_file);
    EXPECT_EQ(text.find("lastProcessedAt"), std::string::npos);
    EXPECT_EQ(lifetimeStatsFromJson(text), LifetimeStats());
}

TEST_F(StatsStoreTest, RoundTripKeepsTheDateToWholeSeconds)
{
    m_time += 999ms;
    open()->record(success(1000, 600));
    EXPECT_EQ(open()->stats().lastProcessedAt, m_time - 999ms);
}

TEST_F(StatsStoreTest, AFailureRewritesTheFile)
{
    const auto store = open();
    store->record(failure());
    fs::remove(m_file);
    store->record(failure());
    EXPECT_EQ(open()->stats().filesProcessed, 2);
}

TEST_F(StatsStoreTest, EveryChangeIsTold)
{
    const auto store = open();
    int told = 0;
    QObject::connect(store.get(), &StatsStore::statsChanged, [&] { ++told; });
    store->record(failure());
    store->reset();
    EXPECT_EQ(told, 2);
}

TEST_F(StatsStoreTest, UnknownKeysAndAMissingOrNullDateAreFine)
{
    for (const std::string& more :
         {std::string(), std::string(R"(,"extra":[1,{"a":2}])"), std::string(R"(,"lastProcessedAt":null)")}) {
        const LifetimeStats stats = loaded("{" + sevenKeys + more + "}");
        EXPECT_EQ(stats.largestSingleSaveBytes, 6) << more;
        EXPECT_EQ(stats.lastProcessedAt, std::nullopt);
    }
}

TEST_F(StatsStoreTest, DatesWithAnOffsetAreTheSameInstant)
{
    const auto stats = loaded("{" + sevenKeys + R"(,"lastProcessedAt":"2023-11-14T23:13:20+01:00"})");
    EXPECT_EQ(stats.lastProcessedAt, m_time);
}

TEST_F(StatsStoreTest, WhatIsNotExactlyTheRecordLoadsAsZero)
{
    const auto date = [](const std::string& text) {
        return "{" + sevenKeys + ",\"lastProcessedAt\":" + text + "}";
    };
    const auto with = [](const std::string& number) {
        std::string text = sevenKeys;
        return "{" + text.replace(text.find("6,"), 1, number) + "}";
    };
    const auto without = [](const std::string& key) {
        std::string text = sevenKeys;
        return "{" + text.replace(text.find(key), 3, "zzz") + "}";
    };
    const std::string bad[] = {"",
                               "{",
                               "[]",
                               "7",
                               "null",
                               "\xff\xfe",
                               without("filesSucceeded"),
                               without("grossBytesSaved"),
                               with("6.0"),
                               with("6e0"),
                               with("\"6\""),
                               with("null"),
                               with("true"),
                               with("9223372036854775808"),
                               with("-9223372036854775809"),
                               with("1e400"),
                               date("\"2023-11-14T22:13:20.5Z\""),
                               date("\"2023-11-14 22:13:20Z\""),
                               date("\"2023-11-14T22:13:20\""),
                               date("\"2023-11-14\""),
                               date("\"2023-13-14T22:13:20Z\""),
                               date("\"9999-01-01T00:00:00Z\""),
                               date("\"\""),
                               date("1700000000"),
                               std::string(1'000'000, '[')};
    for (const std::string& json : bad)
        EXPECT_EQ(loaded(json), LifetimeStats()) << json.substr(0, 300);
}

TEST_F(StatsStoreTest, TheExtremesOf64BitsLoad)
{
    std::string text = sevenKeys;
    text.replace(text.find("6,"), 1, "-9223372036854775808");
    EXPECT_EQ(loaded("{" + text + "}").grossBytesSaved, std::numeric_limits<std::int64_t>::min());
}

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

// A limit on the size of files stands for a disk that takes no more bytes.
class FullDisk
{
public:
    FullDisk()
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit none{0, m_limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &none);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    rlimit m_limit{};
    void (*m_handler)(int);
};

TEST_F(StatsStoreTest, AFullDiskKeepsTheOldFileAndTheTotalsInMemory)
{
    const auto store = open();
    store->record(failure());
    {
        const FullDisk full;
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

using LifetimeStatsDeathTest = StatsStoreTest;

TEST_F(LifetimeStatsDeathTest, ATotalBeyond64BitsEndsTheProgramWithAMessage)
{
    const auto overflow = [](LifetimeStats stats, const ProcessingResult& result) { stats.add(result, {}); };
    LifetimeStats full;
    full.originalBytes = maximum;
    EXPECT_DEATH(overflow(full, success(1, 1)), "64 bits");
    EXPECT_DEATH(overflow({}, success(maximum, -1)), "64 bits");
    full = {};
    full.filesProcessed = maximum;
    EXPECT_DEATH(overflow(full, failure()), "64 bits");
}

class UserDataFolder : public ::testing::Test
{
protected:
    void SetUp() override { setenv("HOME", m_home.path().c_str(), 1); }
    void TearDown() override
    {
        unsetenv("XDG_DATA_HOME");
        setenv("HOME", "/", 1);
    }
    TemporaryDirectory m_home;
};

TEST_F(UserDataFolder, IsWhatTheEnvironmentNames)
{
    setenv("XDG_DATA_HOME", (m_home / "data").c_str(), 1);
    EXPECT_EQ(StatsStore::userDataFolder(), m_home / "data");
}

TEST_F(UserDataFolder, IsBelowHomeWithoutAUsableName)
{
    test::writeFile(m_home / "file", "");
    for (const std::string& name :
         {std::string(), std::string("relative"), (m_home / "file/data").string()}) {
        setenv("XDG_DATA_HOME", name.c_str(), 1);
        EXPECT_EQ(StatsStore::userDataFolder(), m_home / ".local/share") << name;
    }
}

} // namespace
} // namespace lumora
