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
    ResultSequence sequence;
};

TEST_F(ResultSequenceTest, WalksDownAndUpOverRowsWithAnOutput)
{
    add("/a.jpg");
    objects.addFailure("/failed.jpg", "no");
    add("/b.jpg");
    sequence.begin(list, list.index(0));
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
    sequence.begin(list, list.index(0));
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
    sequence.begin(list, list.index(1));
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
    sequence.begin(list, list.index(0));
    objects.model.clearResults();
    EXPECT_EQ(current(), "b.jpg");
    EXPECT_FALSE(sequence.canStep(1));
    sequence.step(1);
    EXPECT_EQ(current(), "b.jpg");
}

// Of which no row is read before it is asked for.
class ReadLater : public ComparableResults
{
public:
    int rowCount(const QModelIndex& = {}) const override { return 2; }
    QVariant data(const QModelIndex&, int) const override { return {}; }
    bool isComparable(const QModelIndex&) const override { return true; }
    std::optional<ProcessingResult> comparedResult(const QModelIndex& row) override
    {
        if (!isRead) return std::nullopt;
        return ProcessingResult(row.row() == 0 ? "/a.jpg" : "/b.jpg", "/out.webp", 2, 1, "", true);
    }
    QModelIndex rowOf(const Uuid&) const override { return {}; }
    void read()
    {
        isRead = true;
        Q_EMIT dataChanged(index(0), index(1));
    }

    bool isRead = false;
};

TEST_F(ResultSequenceTest, TakesAResultThatIsReadLater)
{
    ReadLater later;
    sequence.begin(later, later.index(0));
    EXPECT_FALSE(sequence.current());
    later.read();
    ASSERT_TRUE(sequence.current());
    EXPECT_EQ(current(), "a.jpg");
    later.isRead = false;
    sequence.step(1);
    EXPECT_EQ(current(), "a.jpg");
    later.read();
    EXPECT_EQ(current(), "b.jpg");
}

TEST_F(ResultSequenceTest, GoesOverToAnotherListAndStaysWhenThatGoes)
{
    add("/a.jpg");
    sequence.begin(list, list.index(0));
    {
        ReadLater other;
        other.isRead = true;
        sequence.begin(other, other.index(1));
        EXPECT_EQ(current(), "b.jpg");
        EXPECT_TRUE(sequence.canStep(-1));
        add("/new.jpg");
    }
    EXPECT_EQ(current(), "b.jpg");
    EXPECT_FALSE(sequence.canStep(-1));
}

} // namespace
} // namespace lumora
