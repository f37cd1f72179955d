// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

namespace lumora {
namespace {

// Every file waits for a disk that answers when the gate is open.
class WaitingForDisk : public test::ModelTest
{
protected:
    WaitingForDisk()
    {
        m_services.workers = 1;
        m_gate.close();
    }

    ProcessingResult optimize(const std::filesystem::path& file, const OptimizerSettings& settings,
                              const OptimizerServices& services) override
    {
        m_encoding.pass(file.filename().string(), services.stop);
        services.waitsForDisk();
        return ModelTest::optimize(file, settings, services);
    }

    bool waitUntilInFlight(std::size_t files)
    {
        return test::waitUntil([&] { return m_gate.inFlight() == files; });
    }

    test::Gate m_encoding; // open
};

TEST_F(WaitingForDisk, LetsTheWorkerGoOn)
{
    drop(files(3));
    EXPECT_TRUE(waitUntilInFlight(3));
    EXPECT_EQ(model().resultCount(), 0);
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 3);
}

TEST_F(WaitingForDisk, HoldsTheWorkerWhenTooManyDo)
{
    drop(files(40));
    ASSERT_TRUE(waitUntilInFlight(16));
    m_gate.letGo("0.png");
    ASSERT_TRUE(test::waitUntil([&] { return model().resultCount() == 1; }));
    EXPECT_TRUE(waitUntilInFlight(16));
    EXPECT_EQ(m_gate.mostInFlight(), 16U);
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 40);
}

TEST_F(WaitingForDisk, StartsNothingWhilePaused)
{
    m_encoding.close();
    drop(files(3));
    ASSERT_TRUE(test::waitUntil([&] { return m_encoding.inFlight() == 1; }));
    model().setPaused(true);
    m_encoding.open();
    ASSERT_TRUE(waitUntilInFlight(1));
    m_gate.open();
    ASSERT_TRUE(waitForStatus("Paused at 1 of 3"));
    EXPECT_EQ(m_gate.started().size(), 1U);
    model().setPaused(false);
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 3);
}

} // namespace
} // namespace lumora
