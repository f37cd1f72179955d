// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Clearing the results, trying failed files again, and the question before very many files.
#include "tests/model/model_harness.h"

#include <fstream>

namespace lumora {
namespace {

using test::ModelTest;

class ResultsRemoved : public ModelTest
{
protected:
    void finish(const std::vector<std::filesystem::path>& paths)
    {
        drop(paths);
        ASSERT_TRUE(waitUntilDone());
    }
    // Lets the retried files through their debounce and their batch.
    void finishRetry()
    {
        m_delay->advance(std::chrono::milliseconds(150));
        ASSERT_TRUE(waitUntilDone());
    }
};

TEST_F(ResultsRemoved, ClearingForgetsThemOnceAndForAll)
{
    int removals = 0;
    QObject::connect(&model(), &ProcessingModel::resultsRemoved, [&] { ++removals; });
    model().clearResults();
    EXPECT_EQ(removals, 0);
    finish(files(3));
    model().clearResults();
    EXPECT_EQ(removals, 1);
    EXPECT_EQ(model().resultCount(), 0);
    EXPECT_EQ(m_stats.stats().filesProcessed, 3);
    EXPECT_EQ(model().statusText(), QStringLiteral("Drop images here"));
    EXPECT_EQ(model().outcome(), BatchOutcome());
    finish({file("later.png")});
    EXPECT_EQ(rows(), std::vector<std::string>{"later.png"});
}

TEST_F(ResultsRemoved, ABatchGoesOnWhenItsResultsAreCleared)
{
    m_gate.close();
    m_services.workers = 1;
    drop(files(3));
    m_gate.letGo("0.png");
    ASSERT_TRUE(test::waitUntil([&] { return model().resultCount() == 1; }));
    model().clearResults();
    EXPECT_EQ(model().statusText(), QStringLiteral("Optimized 1 of 3"));
    m_gate.open();
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 2);
    EXPECT_EQ(model().outcome(), (BatchOutcome{3, 0, 0, 0}));
}

TEST_F(ResultsRemoved, FailedFilesAreTriedAgainInTheirOrderAndReplaceTheirRows)
{
    m_services.workers = 1;
    finish({file("bad1.png"), file("good.png"), file("bad2.png")});
    const auto before = m_gate.started().size();
    model().retryFailed();
    EXPECT_EQ(rows(), std::vector<std::string>{"good.png"});
    finishRetry();
    const auto started = m_gate.started();
    EXPECT_EQ(std::vector<std::string>(started.begin() + static_cast<std::ptrdiff_t>(before), started.end()),
              (std::vector<std::string>{"bad1.png", "bad2.png"}));
    EXPECT_EQ(rows(), (std::vector<std::string>{"bad2.png", "bad1.png", "good.png"}));
}

TEST_F(ResultsRemoved, OneRowIsTriedAgainAlone)
{
    m_services.workers = 1;
    finish({file("bad1.png"), file("bad2.png"), file("good.png")});
    model().retry(0);
    EXPECT_EQ(rows(), (std::vector<std::string>{"good.png", "bad2.png", "bad1.png"}));
    model().retry(1);
    EXPECT_EQ(rows(), (std::vector<std::string>{"good.png", "bad1.png"}));
    finishRetry();
    EXPECT_EQ(rows(), (std::vector<std::string>{"bad2.png", "good.png", "bad1.png"}));
}

class VeryManyFiles : public ModelTest
{
protected:
    VeryManyFiles()
    {
        std::filesystem::create_directories(file("tree/deep"));
        for (const char* name : {"a.png", "b.png", "deep/c.png"})
            std::ofstream(file("tree") / name) << "x";
        m_services.manyFiles = 3;
        m_services.confirmManyFiles = [this](std::size_t count, std::size_t folders) {
            m_asked.emplace_back(count, folders);
            return m_answer;
        };
    }

    std::vector<std::pair<std::size_t, std::size_t>> m_asked;
    bool m_answer = false;
};

TEST_F(VeryManyFiles, AreAskedAboutBeforeAnythingIsWritten)
{
    bool completed = false;
    model().setOnComplete([&] { completed = true; });
    drop({file("tree")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(m_asked, (std::vector<std::pair<std::size_t, std::size_t>>{{3, 2}}));
    EXPECT_TRUE(m_gate.started().empty());
    EXPECT_EQ(model().statusText(), QStringLiteral("Done"));
    EXPECT_EQ(model().outcome(), (BatchOutcome{0, 0, 0, 3}));
    EXPECT_TRUE(model().wasCancelled());
    EXPECT_TRUE(completed);
}

TEST_F(VeryManyFiles, AreProcessedWhereTheUserWantsThem)
{
    m_answer = true;
    drop({file("tree")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().resultCount(), 3);
}

TEST_F(VeryManyFiles, ThatWereNamedOneByOneAreNotAskedAbout)
{
    drop({file("tree/a.png"), file("tree/b.png"), file("tree/deep/c.png")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_asked.empty());
    EXPECT_EQ(model().resultCount(), 3);
}

TEST_F(VeryManyFiles, FewerAreNotAskedAbout)
{
    m_services.manyFiles = 4;
    drop({file("tree")});
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_asked.empty());
}

} // namespace
} // namespace lumora
