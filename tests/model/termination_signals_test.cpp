// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/termination_signals.h"

#include "tests/model/event_loop.h"

#include <gmock/gmock.h>

#include <csignal>
#include <memory>

namespace lumora {
namespace {

using testing::ElementsAre;

using Handler = void (*)(int);

Handler handlerOf(int signalNumber)
{
    struct sigaction action
    {
    };
    sigaction(signalNumber, nullptr, &action);
    return action.sa_handler;
}

// A signal that gets through ends this whole program, and with it the test.
class TerminationSignalsTest : public testing::Test
{
protected:
    ~TerminationSignalsTest() override { std::signal(SIGHUP, SIG_DFL); }

    void watch()
    {
        m_signals = std::make_unique<TerminationSignals>();
        QObject::connect(m_signals.get(), &TerminationSignals::received,
                         [this](int signalNumber) { m_received.push_back(signalNumber); });
    }
    bool receives(std::size_t count)
    {
        return test::waitUntil([&] { return m_received.size() >= count; });
    }

    std::unique_ptr<TerminationSignals> m_signals;
    std::vector<int> m_received;
};

TEST_F(TerminationSignalsTest, ArriveThroughTheEventLoopInTheirOrder)
{
    watch();
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP, SIGINT})
        std::raise(signalNumber);
    EXPECT_THAT(m_received, ElementsAre());
    ASSERT_TRUE(receives(4));
    EXPECT_THAT(m_received, ElementsAre(SIGINT, SIGTERM, SIGHUP, SIGINT));
}

TEST_F(TerminationSignalsTest, LeaveAProgramAloneThatShallOutliveItsTerminal)
{
    std::signal(SIGHUP, SIG_IGN);
    watch();
    std::raise(SIGHUP);
    std::raise(SIGTERM);
    ASSERT_TRUE(receives(1));
    EXPECT_THAT(m_received, ElementsAre(SIGTERM));
    m_signals.reset();
    EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
}

TEST_F(TerminationSignalsTest, ReachABackgroundJobThoughItBeganDeafToThem)
{
    std::signal(SIGINT, SIG_IGN);
    watch();
    std::raise(SIGINT);
    EXPECT_TRUE(receives(1));
    m_signals.reset();
    EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
}

TEST_F(TerminationSignalsTest, EndTheProgramAgainOnceNobodyListens)
{
    watch();
    m_signals.reset();
    for (const int signalNumber : {SIGINT, SIGTERM, SIGHUP})
        EXPECT_EQ(handlerOf(signalNumber), SIG_DFL) << signalNumber;
}

} // namespace
} // namespace lumora
