// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/memory_budget.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

namespace lumora {
namespace {

constexpr std::int64_t unit = MemoryBudget::uncounted + 1;

// A worker that asks for memory, tells when it has it, and keeps it until it is let go.
class Worker
{
public:
    Worker(MemoryBudget& budget, std::int64_t bytes)
        : m_thread([this, &budget, bytes](const std::stop_token& stop) {
              const auto share = budget.take(bytes, stop);
              m_outcome.set_value(share.has_value());
              m_release.get_future().wait();
          })
    {
    }
    ~Worker() { letGo(); }

    // Blocks until the budget has answered; whether it gave the bytes.
    bool isServed() { return m_answer.get(); }
    void stop() { m_thread.request_stop(); }
    void letGo()
    {
        if (!m_isLetGo) m_release.set_value();
        m_isLetGo = true;
    }

private:
    std::promise<bool> m_outcome;
    std::future<bool> m_answer = m_outcome.get_future();
    std::promise<void> m_release;
    bool m_isLetGo = false;
    std::jthread m_thread;
};

class Budget : public testing::Test
{
protected:
    MemoryBudget m_budget{[this] {
        m_measured.push_back(m_limit);
        return m_limit;
    }};
    std::int64_t m_limit = 3 * unit;
    std::vector<std::int64_t> m_measured;
};

TEST_F(Budget, LetsSmallFilesPassWhateverIsTaken)
{
    const auto large = m_budget.take(100 * unit, {});
    for (int i = 0; i < 100; ++i)
        EXPECT_TRUE(m_budget.take(MemoryBudget::uncounted, {}));
}

TEST_F(Budget, LetsOneFileGoOnHoweverLarge)
{
    m_limit = 0;
    EXPECT_TRUE(m_budget.take(1'000'000 * unit, {}));
    EXPECT_TRUE(m_budget.take(unit, {})); // the other has been given back
}

TEST_F(Budget, SharesOutNoMoreThanThereIs)
{
    auto first = m_budget.take(2 * unit, {});
    const auto second = m_budget.take(unit, {});
    Worker third(m_budget, unit);
    third.stop();
    EXPECT_FALSE(third.isServed());

    Worker fourth(m_budget, 2 * unit);
    first.reset();
    EXPECT_TRUE(fourth.isServed());
}

TEST_F(Budget, ServesOneAfterTheOther)
{
    auto all = m_budget.take(3 * unit, {});
    Worker large(m_budget, 3 * unit);
    all.reset();
    EXPECT_TRUE(large.isServed());
    Worker small(m_budget, unit);
    large.letGo();
    EXPECT_TRUE(small.isServed());
}

TEST_F(Budget, GoesOnWithTheNextWhenOneGivesUp)
{
    auto most = m_budget.take(2 * unit, {});
    Worker stopped(m_budget, 3 * unit);
    Worker fitting(m_budget, unit);
    stopped.stop();
    EXPECT_FALSE(stopped.isServed());
    EXPECT_TRUE(fitting.isServed());
}

TEST_F(Budget, AsksHowMuchThereIsWheneverNothingIsTaken)
{
    m_budget.take(unit, {}).reset();
    m_limit = 5 * unit;
    const auto first = m_budget.take(unit, {});
    EXPECT_TRUE(m_budget.take(4 * unit, {}));
    EXPECT_EQ(m_measured, (std::vector<std::int64_t>{3 * unit, 5 * unit}));
}

TEST_F(Budget, IsLeftAtOnceByWhoWasStoppedBefore)
{
    const auto all = m_budget.take(3 * unit, {});
    std::stop_source stopped;
    stopped.request_stop();
    EXPECT_FALSE(m_budget.take(unit, stopped.get_token()));
}

} // namespace
} // namespace lumora
