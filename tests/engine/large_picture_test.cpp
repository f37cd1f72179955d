// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files that take so much memory that they are counted. Wide ones do at little cost.
#include "engine/local/memory_need.h"
#include "engine/memory_budget.h"
#include "tests/engine/optimizer_test.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

const test::SettingsDraft toPng{.resizeMode = ResizeMode::none, .outputFormat = OutputFormat::png};

class LargePicture : public test::OptimizerTest
{
protected:
    LargePicture() { m_services.memory = &m_budget; }

    std::filesystem::path large(const std::string& name)
    {
        test::save(m_in / name, test::uniformPicture(40000, 2, {10, 200, 30}));
        return m_in / name;
    }
    std::filesystem::path outputOf(const std::filesystem::path& file,
                                   const test::SettingsDraft& draft = toPng)
    {
        return *optimize(file, draft).outputURL;
    }

    MemoryBudget m_budget{[] { return std::int64_t{0}; }};
};

TEST_F(LargePicture, IsWrittenAndGivesItsMemoryBack)
{
    const auto output = outputOf(large("a.png"));
    EXPECT_EQ(test::load(output).width, 40000);
    EXPECT_TRUE(m_budget.take(MemoryBudget::uncounted + 1, {}));
}

TEST_F(LargePicture, WaitsForMemoryUntilItIsStopped)
{
    const auto file = large("a.png");
    const auto taken = m_budget.take(MemoryBudget::uncounted + 1, {});
    std::stop_source stop;
    stop.request_stop();
    m_services.stop = stop.get_token();
    EXPECT_EQ(failureOf(file, toPng), "The work was stopped.");
    m_services.stop = {};
    EXPECT_EQ(failureOf(photo("small.png"), toPng), "no failure");
}

TEST_F(LargePicture, IsReadOnceMoreWhenItsOutputMayBeReplaced)
{
    const auto file = large("a.png");
    const auto output = outputOf(file);
    const std::string before = test::readBytes(output);
    test::writeText(output, "older");
    test::SettingsDraft asking = toPng;
    asking.warnBeforeOverwrite = true;
    std::optional<MemoryBudget::Share> meanwhile;
    m_services.confirmOverwrite = [&](const std::filesystem::path&) {
        meanwhile = m_budget.take(MemoryBudget::uncounted + 1, {}); // there for others while the user thinks
        meanwhile.reset();
        return true;
    };
    EXPECT_EQ(outputOf(file, asking), output);
    EXPECT_EQ(test::readBytes(output), before);
}

TEST_F(LargePicture, IsNotAskedAboutWhenItIsDamaged)
{
    const auto file = large("a.png");
    const auto output = outputOf(file);
    const std::string whole = test::readBytes(file);
    test::writeText(file, whole.substr(0, whole.size() - 20));
    test::SettingsDraft asking = toPng;
    asking.warnBeforeOverwrite = true;
    const std::string before = test::readBytes(output);
    EXPECT_EQ(failureOf(file, asking), "The image could not be read.");
    EXPECT_TRUE(m_asked.empty());
    EXPECT_EQ(test::readBytes(output), before);
}

class MemoryNeed : public test::OptimizerTest
{
protected:
    std::int64_t need(const test::SettingsDraft& draft, const test::SaveOptions& options = {})
    {
        test::save(m_in / "a.jpg", test::uniformPicture(1000, 2000, {10, 200, 30}), options);
        return ImageOptimizer::memoryNeed(*ImageSource::open(m_in / "a.jpg"), test::settings(draft));
    }
};

TEST_F(MemoryNeed, GrowsWithWhatIsHeld)
{
    test::SettingsDraft rows{
        .resizeMode = ResizeMode::none, .outputFormat = OutputFormat::jpeg, .quality = 82};
    const auto needOfRows = need(rows);
    test::SettingsDraft whole = rows;
    whole.outputFormat = OutputFormat::heic;
    EXPECT_GT(need(whole), needOfRows);
    EXPECT_GE(need(rows, {.orientation = 6}), needOfRows + std::int64_t{4} * 1000 * 2000);
    EXPECT_LT(need(rows, {.orientation = 2}), needOfRows + std::int64_t{1000} * 2000);
    test::SettingsDraft edges = rows;
    edges.quality = 95;
    EXPECT_GT(need(edges), needOfRows);
    test::SettingsDraft bounded = rows;
    bounded.resizeMode = ResizeMode::longestEdge;
    bounded.maximumPixels = 500;
    EXPECT_LT(need(bounded), needOfRows);
}

} // namespace
} // namespace lumora
