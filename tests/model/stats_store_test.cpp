// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/stats_store_harness.h"

#include <cstdlib>
#include <limits>

namespace lumora {
namespace {

using test::failure;
using test::sevenKeys;
using test::StatsStoreTest;
using test::success;
using test::TemporaryDirectory;
namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr std::int64_t maximum = std::numeric_limits<std::int64_t>::max();

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
