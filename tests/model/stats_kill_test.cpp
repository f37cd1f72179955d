// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A program that records without pause, killed at random instants: the totals on disk always load. The number
// of kills is LUMORA_KILLS in the environment, 20 without it.
#include "model/lifetime_stats.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <thread>

namespace lumora {
namespace {

// Runs the recorder, lets it record for `time`, kills it.
void recordAndKill(const std::filesystem::path& folder, std::chrono::microseconds time)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(ends[1], STDOUT_FILENO);
        ::execl(LUMORA_RECORD_FOREVER, LUMORA_RECORD_FOREVER, folder.c_str(), nullptr);
        ::_exit(127);
    }
    ::close(ends[1]);
    char begun = 0;
    EXPECT_EQ(::read(ends[0], &begun, 1), 1);
    ::close(ends[0]);
    std::this_thread::sleep_for(time); // the random instant is what is tested, nothing waits for it
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

TEST(StatsKill, NeverLeavesAFileThatDoesNotLoad)
{
    const test::TemporaryDirectory directory;
    const char* wanted = std::getenv("LUMORA_KILLS");
    const int kills = wanted ? std::atoi(wanted) : 20;
    std::mt19937 random{std::random_device{}()};
    std::uniform_int_distribution<int> microseconds(0, 20'000);
    std::int64_t before = 0;
    int advanced = 0;
    for (int i = 0; i < kills; ++i) {
        recordAndKill(directory.path(), std::chrono::microseconds(microseconds(random)));
        const auto file = directory / "Lumora/stats.json";
        if (!std::filesystem::exists(file)) continue; // killed before the first record
        const auto stats = lifetimeStatsFromJson(test::readFile(file));
        ASSERT_TRUE(stats) << test::readFile(file);
        EXPECT_GE(stats->filesProcessed, before);
        EXPECT_EQ(stats->netBytesSaved, stats->filesProcessed * 400'000);
        advanced += stats->filesProcessed > before;
        before = stats->filesProcessed;
    }
    EXPECT_GT(advanced, 0);
    std::printf("%d kills, %d after new records, %lld records in all, every file loaded\n", kills, advanced,
                static_cast<long long>(before));
}

} // namespace
} // namespace lumora
