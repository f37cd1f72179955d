// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/free_memory.h"

#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class FreeMemory : public testing::Test
{
protected:
    void write(const std::string& name, const std::string& text)
    {
        std::filesystem::create_directories((m_root / name).parent_path());
        test::writeText(m_root / name, text);
    }
    void writeAvailable(int kilobytes)
    {
        write("proc/meminfo", "MemTotal:       9000 kB\nMemAvailable:   " + std::to_string(kilobytes) +
                                  " kB\nCached: 1 kB\n");
    }

    test::TemporaryDirectory m_root;
};

TEST_F(FreeMemory, IsWhatTheKernelSays)
{
    writeAvailable(500);
    EXPECT_EQ(freeMemory(m_root.path()), 500 * 1024);
}

TEST_F(FreeMemory, IsNoneWhereNothingIsKnown)
{
    EXPECT_EQ(freeMemory(m_root.path()), 0);
    EXPECT_GT(freeMemory(), 0);
}

TEST_F(FreeMemory, IsNoMoreThanAnyGroupAllows)
{
    writeAvailable(1'000'000);
    write("proc/self/cgroup", "0::/outer/inner\n");
    write("sys/fs/cgroup/outer/memory.max", "90000\n");
    write("sys/fs/cgroup/outer/memory.current", "50000\n");
    write("sys/fs/cgroup/outer/memory.stat", "anon 1\ninactive_file 7000\nslab 2\n");
    write("sys/fs/cgroup/outer/inner/memory.max", "max\n");
    write("sys/fs/cgroup/outer/inner/memory.current", "40000\n");
    EXPECT_EQ(freeMemory(m_root.path()), 47000);
    write("sys/fs/cgroup/outer/inner/memory.max", "30000\n");
    EXPECT_EQ(freeMemory(m_root.path()), 0);
}

TEST_F(FreeMemory, KnowsTheGroupsOfTheFirstKind)
{
    writeAvailable(1'000'000);
    write("proc/self/cgroup", "5:cpu,cpuacct:/box\n4:memory:/box\n");
    write("sys/fs/cgroup/memory/box/memory.limit_in_bytes", "80000\n");
    write("sys/fs/cgroup/memory/box/memory.usage_in_bytes", "30000\n");
    write("sys/fs/cgroup/memory/box/memory.stat", "inactive_file 1\ntotal_inactive_file 5000\n");
    EXPECT_EQ(freeMemory(m_root.path()), 55000);
}

} // namespace
} // namespace lumora
