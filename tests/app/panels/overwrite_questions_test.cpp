// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/overwrite_questions.h"

#include "tests/app/fake_model.h"

#include <gtest/gtest.h>

using namespace lumora;

namespace {

using Choice = OverwriteAnswer::Choice;

class OverwriteQuestionsOfABatch : public testing::Test
{
protected:
    test::FakeModel m_model;
    OverwriteAnswer m_answer;
    int m_asked = 0;
    OverwriteQuestions m_questions{[this](const std::filesystem::path&) {
        ++m_asked;
        return m_answer;
    }};
};

TEST_F(OverwriteQuestionsOfABatch, AreEachAsked)
{
    m_answer = {Choice::replace, false};
    EXPECT_TRUE(m_questions.confirm("/a.png"));
    m_answer = {Choice::skip, false};
    EXPECT_FALSE(m_questions.confirm("/b.png"));
    EXPECT_EQ(m_asked, 2);
}

TEST_F(OverwriteQuestionsOfABatch, AreAnsweredOnceForTheRemainingFilesOfTheBatch)
{
    m_questions.follow(m_model.model());
    m_answer = {Choice::replace, true};
    EXPECT_TRUE(m_questions.confirm("/a.png"));
    EXPECT_TRUE(m_questions.confirm("/b.png"));
    EXPECT_EQ(m_asked, 1);
    ASSERT_TRUE(m_model.finish(1));
    m_answer = {Choice::skip, false};
    EXPECT_FALSE(m_questions.confirm("/c.png"));
    EXPECT_EQ(m_asked, 2);
}

TEST_F(OverwriteQuestionsOfABatch, CancelTheBatchAndSkipWhatIsInWork)
{
    m_questions.follow(m_model.model());
    m_model.model().process({"/fake/a.png"});
    m_answer = {Choice::cancelBatch, true};
    EXPECT_FALSE(m_questions.confirm("/a.png"));
    EXPECT_FALSE(m_questions.confirm("/b.png"));
    EXPECT_EQ(m_asked, 1);
    EXPECT_TRUE(test::waitFor([&] { return !m_model.model().isProcessing(); }));
    EXPECT_EQ(m_model.model().resultCount(), 0);
}

} // namespace
