// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/result_sequence.h"

#include "tests/ui/drop_window_objects.h"
#include "ui/results/results_list_model.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class ResultSequenceTest : public testing::Test
{
protected:
    void add(const char* file) { objects.addSuccess(file, 2000, 1000, "Optimized"); }
    std::string current() const { return sequence.current()->sourceURL.filename().string(); }

    test::DropWindowObjects objects;
    ResultsListModel list{objects.model};
    ResultSequence sequence{list};
};

TEST_F(ResultSequenceTest, WalksDownAndUpOverRowsWithAnOutput)
{
    add("/a.jpg");
    objects.addFailure("/failed.jpg", "no");
    add("/b.jpg");
    sequence.begin(list.index(0));
    EXPECT_EQ(current(), "b.jpg");
    EXPECT_FALSE(sequence.canStep(-1));
    sequence.step(1);
    EXPECT_EQ(current(), "a.jpg");
    EXPECT_FALSE(sequence.canStep(1));
    sequence.step(1);
    EXPECT_EQ(current(), "a.jpg");
    sequence.step(-1);
    EXPECT_EQ(current(), "b.jpg");
}

TEST_F(ResultSequenceTest, KeepsItsPlaceWhenRowsCome)
{
    add("/a.jpg");
    sequence.begin(list.index(0));
    add("/b.jpg");
    EXPECT_EQ(current(), "a.jpg");
    ASSERT_TRUE(sequence.canStep(-1));
    sequence.step(-1);
    EXPECT_EQ(current(), "b.jpg");
}

TEST_F(ResultSequenceTest, FollowsItsRowIntoAnotherOrder)
{
    add("/b.jpg");
    add("/a.jpg");
    add("/c.jpg");
    sequence.begin(list.index(1));
    list.arrange(ResultsOrder::name, false);
    EXPECT_EQ(current(), "a.jpg");
    EXPECT_FALSE(sequence.canStep(-1));
    sequence.step(1);
    EXPECT_EQ(current(), "b.jpg");
}

TEST_F(ResultSequenceTest, StaysWithAResultThatWasCleared)
{
    add("/a.jpg");
    add("/b.jpg");
    sequence.begin(list.index(0));
    objects.model.clearResults();
    EXPECT_EQ(current(), "b.jpg");
    EXPECT_FALSE(sequence.canStep(1));
    sequence.step(1);
    EXPECT_EQ(current(), "b.jpg");
}

} // namespace
} // namespace lumora
