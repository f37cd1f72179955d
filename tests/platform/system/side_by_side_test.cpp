// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/side_by_side.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <thread>
#include <vector>

namespace lumora {
namespace {

using namespace std::chrono_literals;

class SideBySide : public ::testing::TestWithParam<int>
{
protected:
    SideBySide() { useProcessors(GetParam()); }
    ~SideBySide() override { useProcessors(1); }
};

INSTANTIATE_TEST_SUITE_P(Processors, SideBySide, ::testing::Values(-1, 1, 2, 5));

TEST_P(SideBySide, DoesEverythingOnce)
{
    for (const std::size_t count : {0U, 1U, 2U, 100U}) {
        std::vector<std::atomic<int>> calls(count);
        runSideBySide(count, [&](std::size_t i) { ++calls[i]; });
        for (const auto& times : calls)
            EXPECT_EQ(times, 1);
    }
}

TEST_P(SideBySide, ThrowsWhatWasThrownAndDropsTheRest)
{
    constexpr std::size_t many = 1'000'000;
    std::atomic<std::size_t> calls{0};
    const auto work = [&](std::size_t i) {
        ++calls;
        if (i == 0) throw std::runtime_error("no more");
    };
    EXPECT_THROW(runSideBySide(many, work), std::runtime_error);
    EXPECT_LT(calls, many);
}

// Two that wait for each other.
TEST(SideBySideThreads, AreAsManyAsProcessors)
{
    useProcessors(2);
    std::atomic<int> met{0};
    runSideBySide(2, [&](std::size_t) {
        ++met;
        for (int i = 0; i < 1000 && met < 2; ++i)
            std::this_thread::sleep_for(10ms);
        EXPECT_EQ(met, 2);
    });
    useProcessors(1);
}

TEST(SideBySideThreads, IsTheCallersAloneUnlessToldOtherwise)
{
    EXPECT_EQ(usedProcessors(), 1);
    runSideBySide(3, [caller = std::this_thread::get_id()](std::size_t) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
    });
}

} // namespace
} // namespace lumora
