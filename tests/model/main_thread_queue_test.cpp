// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/main_thread_queue.h"

#include "tests/model/event_loop.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace lumora {
namespace {

TEST(MainThreadQueue, ACallThatRunsAnEventLoopDoesNotHoldUpThoseBehindIt)
{
    MainThreadQueue queue;
    bool cameDuringTheFirst = false;
    bool isOver = false;
    bool secondRan = false;
    queue.post([&] {
        cameDuringTheFirst = test::waitUntil([&] { return secondRan; });
        isOver = true;
    });
    queue.post([&] { secondRan = true; });
    ASSERT_TRUE(test::waitUntil([&] { return isOver; }));
    EXPECT_TRUE(cameDuringTheFirst);
}

TEST(MainThreadQueue, CallsOfAThreadRunInTheirOrderAndNoneIsLost)
{
    constexpr int count = 20'000;
    MainThreadQueue queue;
    std::vector<int> ran;
    const std::jthread poster([&] {
        for (int i = 0; i < count; ++i)
            queue.post([&ran, i] { ran.push_back(i); });
    });
    ASSERT_TRUE(test::waitUntil([&] { return ran.size() == count; }));
    for (int i = 0; i < count; ++i)
        ASSERT_EQ(ran[static_cast<std::size_t>(i)], i);
}

} // namespace
} // namespace lumora
