// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/freed_memory.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

namespace lumora {
namespace {

// Bytes of memory that the process has from the system.
std::size_t residentBytes()
{
    std::size_t total = 0;
    std::size_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

bool hasOwnAllocator()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

// Pieces too small for pages of their own, every one followed by one that stays: the gaps that codecs leave.
class HeapWithGaps
{
public:
    HeapWithGaps()
    {
        for (int i = 0; i < 1000; ++i) {
            std::vector<std::unique_ptr<std::string>>& kept = i % 2 == 0 ? m_gaps : m_kept;
            kept.push_back(std::make_unique<std::string>(i % 2 == 0 ? 60'000 : 100, 'x'));
        }
        m_gaps.clear();
    }

private:
    std::vector<std::unique_ptr<std::string>> m_gaps;
    std::vector<std::unique_ptr<std::string>> m_kept;
};

TEST(FreedMemory, GoesBackToTheSystemWithinFourFiles)
{
    if (hasOwnAllocator()) GTEST_SKIP() << "the sanitizer's heap keeps what is freed";
    const HeapWithGaps heap;
    const std::size_t before = residentBytes();
    for (int file = 0; file < 4; ++file)
        returnFreedMemory();
    EXPECT_LT(residentBytes() + 20'000'000, before);
}

TEST(FreedMemory, WaitsForTheNextFileWhereItIsKept)
{
    if (hasOwnAllocator()) GTEST_SKIP() << "the sanitizer's heap keeps what is freed";
    constexpr std::size_t large = 24'000'000;
    keepFreedMemory();
    std::vector<char>(large, 'x').clear();
    const std::size_t before = residentBytes();
    for (int picture = 0; picture < 3; ++picture) {
        const std::vector<char> pixels(large, 'x');
        EXPECT_LT(residentBytes(), before + large / 2) << "no new pages";
    }
    EXPECT_GT(residentBytes() + large / 2, before) << "none given back";
    for (int file = 0; file < 4; ++file)
        returnFreedMemory();
    EXPECT_LT(residentBytes() + large / 2, before);
}

TEST(FreedMemory, IsForEveryThread)
{
    if (hasOwnAllocator()) GTEST_SKIP() << "the sanitizer's heap keeps what is freed";
    constexpr std::size_t large = 24'000'000;
    keepFreedMemory();
    std::thread([] { std::vector<char>(large, 'x').clear(); }).join();
    const std::size_t before = residentBytes();
    const std::vector<char> pixels(large, 'x');
    EXPECT_LT(residentBytes(), before + large / 2) << "no new pages";
}

} // namespace
} // namespace lumora
