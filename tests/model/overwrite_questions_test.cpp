// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

#include <thread>

namespace lumora {
namespace {

using test::ModelTest;

class OverwriteQuestions : public ModelTest
{
protected:
    ProcessingResult optimize(const std::filesystem::path& file, const OptimizerSettings& settings,
                              const OptimizerServices& services) override
    {
        ModelTest::optimize(file, settings, services);
        if (!services.confirmOverwrite(file)) throw ImageOptimizerError::overwriteDeclined();
        return {file, file, 100, 60, "Replaced", true};
    }
};

TEST_F(OverwriteQuestions, AreAskedOneAtATimeOnTheMainThread)
{
    const auto mainThread = std::this_thread::get_id();
    bool isOpen = false;
    m_services.confirmOverwrite = [&](const std::filesystem::path& output) {
        EXPECT_EQ(std::this_thread::get_id(), mainThread);
        EXPECT_FALSE(isOpen);
        isOpen = true;
        test::handleEvents(); // a dialog: meanwhile other questions come
        isOpen = false;
        return output.filename() == "1.png";
    };
    drop(files(20));
    ASSERT_TRUE(waitUntilDone());
    for (int row = 0; row < 20; ++row) {
        const bool isReplaced = model().resultAt(row).sourceURL.filename() == "1.png";
        EXPECT_EQ(model().resultAt(row).isSuccess, isReplaced);
    }
}

TEST_F(OverwriteQuestions, HoldUpTheirOwnFileOnly)
{
    m_services.workers = 2;
    m_gate.close();
    m_services.confirmOverwrite = [&](const std::filesystem::path& output) {
        if (output.filename() != "0.png") return true;
        m_gate.letGo("1.png");
        return test::waitUntil([&] { return m_gate.started().size() == 2; });
    };
    m_gate.letGo("0.png");
    drop(files(2));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(m_stats.stats().filesSucceeded, 2);
}

TEST_F(OverwriteQuestions, WithoutAnybodyToAskAreSkipped)
{
    drop(files(2));
    ASSERT_TRUE(waitUntilDone());
    ASSERT_EQ(model().resultCount(), 2);
    EXPECT_EQ(model().resultAt(0).message, "Skipped because the output file already exists.");
}

TEST_F(OverwriteQuestions, CancellingAtOnceSkipsThoseNotYetShown)
{
    m_services.workers = 8;
    int asked = 0;
    m_services.confirmOverwrite = [&](const std::filesystem::path&) {
        ++asked;
        model().cancelNow();
        return false;
    };
    drop(files(8));
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(asked, 1);
}

TEST_F(OverwriteQuestions, DestructionAnswersThemWithSkip)
{
    m_services.confirmOverwrite = [&](const std::filesystem::path&) {
        ADD_FAILURE() << "nobody is left to answer";
        return true;
    };
    m_gate.close();
    drop(files(4));
    ASSERT_TRUE(test::waitUntil([&] { return model().totalCount() == 4; }));
    ASSERT_TRUE(test::waitUntil([&] { return m_gate.inFlight() == 4; }));
    m_gate.open();
    while (m_gate.inFlight() != 0) // no events from here on: the questions are put and not shown
        std::this_thread::yield();
    m_model.reset();
    EXPECT_EQ(m_stats.stats().filesProcessed, 0);
}

} // namespace
} // namespace lumora
