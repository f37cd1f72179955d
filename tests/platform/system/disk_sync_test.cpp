// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/disk_sync.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace lumora {
namespace {

TEST(DiskSync, FailsOnlyForWhatIsNotThere)
{
    const test::TemporaryDirectory folder;
    test::writeFile(folder / "file", "content");
    DiskSync disk;
    EXPECT_TRUE(disk.sync(folder / "file"));
    EXPECT_FALSE(disk.sync(folder / "missing"));
    EXPECT_FALSE(disk.sync(folder / "no folder" / "missing"));
}

TEST(DiskSync, TellsEachOfThoseThatWaitTogetherItsOwn)
{
    const test::TemporaryDirectory folder;
    DiskSync disk;
    std::atomic<int> wrong = 0;
    {
        constexpr int threads = 16;
        std::vector<std::jthread> waiting;
        for (int i = 0; i < threads; ++i) {
            waiting.emplace_back([&, i] {
                constexpr int rounds = 20;
                const auto file = folder / (std::to_string(i % 4) + "-" + std::to_string(i));
                for (int round = 0; round < rounds; ++round) {
                    const bool isThere = (i + round) % 3 != 0;
                    if (isThere) test::writeFile(file, "content");
                    if (static_cast<bool>(disk.sync(file)) != isThere) ++wrong;
                    std::filesystem::remove(file);
                }
            });
        }
    }
    EXPECT_EQ(wrong, 0);
}

} // namespace
} // namespace lumora
