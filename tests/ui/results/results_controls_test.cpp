// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_controls.h"

#include "tests/ui/results/results_window.h"
#include "ui/controls/chip_button.h"
#include "ui/results/results_list_model.h"

#include <QAction>

#include <gtest/gtest.h>

namespace lumora {
namespace {

class ResultsControlsTest : public testing::Test, protected test::ResultsWindow
{
protected:
    ChipButton* chip(const char* text)
    {
        for (ChipButton* candidate : list->findChildren<ChipButton*>()) {
            if (candidate->text() == QLatin1String(text)) return candidate;
        }
        return nullptr;
    }
    bool offers(const char* text)
    {
        const ChipButton* found = chip(text);
        return found && found->isVisible();
    }
    void sortBy(const char* item)
    {
        auto* menu = list->findChild<QMenu*>();
        for (QAction* action : menu->actions()) {
            if (action->text() == QLatin1String(item)) action->trigger();
        }
    }
    QStringList names()
    {
        QStringList shown;
        for (int row = 0; row < view().model()->rowCount(); ++row)
            shown << at(row, Qt::DisplayRole).toString();
        return shown;
    }
    static QStringList words(std::initializer_list<const char*> texts)
    {
        QStringList list;
        for (const char* text : texts)
            list << QString::fromUtf8(text);
        return list;
    }
    void addMixture()
    {
        objects.addSuccess("/photos/b.jpg", 5000, 1000, "Optimized");
        objects.addFailure("/photos/d.jpg", "The image could not be read.");
        objects.addSuccess("/photos/a.jpg", 9000, 1000, "Optimized");
        objects.addSuccess("/photos/c.jpg", 1000, 2000, "Converted");
        QCoreApplication::processEvents();
    }
};

TEST_F(ResultsControlsTest, OfferFilterAndRetryOnlyOnceSomethingFailed)
{
    addSuccesses(1);
    EXPECT_FALSE(offers("1 failed"));
    EXPECT_FALSE(offers("Try Again"));
    EXPECT_TRUE(offers("Clear"));
    objects.addFailure("/photos/skip.jpg", "Skipped because the output file already exists.");
    EXPECT_FALSE(offers("1 failed"));
    objects.addFailure("/photos/bad.jpg", "no");
    EXPECT_TRUE(offers("1 failed"));
    EXPECT_TRUE(offers("Try Again"));
}

TEST_F(ResultsControlsTest, ShowTheFailuresAloneAndThoseThatCome)
{
    addMixture();
    chip("1 failed")->click();
    EXPECT_EQ(names(), words({"d.jpg"}));
    objects.addSuccess("/photos/e.jpg", 2, 1, "Optimized");
    EXPECT_EQ(names(), words({"d.jpg"}));
    objects.addFailure("/photos/f.jpg", "no");
    EXPECT_EQ(names(), words({"f.jpg", "d.jpg"}));
    EXPECT_TRUE(chip("2 failed")->isChecked());
    EXPECT_EQ(chip("2 failed")->accessibleName(), QStringLiteral("2 failed, shown alone on"));
    chip("2 failed")->click();
    EXPECT_EQ(names(), words({"f.jpg", "e.jpg", "c.jpg", "a.jpg", "d.jpg", "b.jpg"}));
}

// A second click on the chip meets it where the first one did.
TEST_F(ResultsControlsTest, ShowTheFailuresAloneInTheSameRoom)
{
    addMixture();
    const int height = view().height();
    chip("1 failed")->click();
    QCoreApplication::processEvents();
    EXPECT_EQ(names(), words({"d.jpg"}));
    EXPECT_EQ(view().height(), height);
    EXPECT_EQ(view().sizeHint().height(), height);
}

TEST_F(ResultsControlsTest, SortBySavingNameAndTimeAndPutNewResultsInTheirPlace)
{
    addMixture();
    sortBy("Largest saving first");
    EXPECT_EQ(names(), words({"a.jpg", "b.jpg", "c.jpg", "d.jpg"}));
    objects.addSuccess("/photos/e.jpg", 7000, 1000, "Optimized");
    EXPECT_EQ(names(), words({"a.jpg", "e.jpg", "b.jpg", "c.jpg", "d.jpg"}));
    sortBy("Name");
    EXPECT_EQ(names(), words({"a.jpg", "b.jpg", "c.jpg", "d.jpg", "e.jpg"}));
    objects.addSuccess("/photos/bb.jpg", 7000, 1000, "Optimized");
    EXPECT_EQ(names(), words({"a.jpg", "b.jpg", "bb.jpg", "c.jpg", "d.jpg", "e.jpg"}));
    sortBy("Newest first");
    EXPECT_EQ(names(), words({"bb.jpg", "e.jpg", "c.jpg", "a.jpg", "d.jpg", "b.jpg"}));
}

TEST_F(ResultsControlsTest, TryEveryFailureAgainAndLeaveTheFilterWhenNoneIsLeft)
{
    addMixture();
    objects.addFailure("/photos/f.jpg", "no");
    chip("2 failed")->click();
    objects.answers.clear(); // the files are readable now
    chip("Try Again")->click();
    ASSERT_TRUE(
        test::waitFor([&] { return objects.model.resultCount() == 5 && !objects.model.isProcessing(); }));
    EXPECT_EQ(names().mid(2), words({"c.jpg", "a.jpg", "b.jpg"}));
    EXPECT_FALSE(offers("Try Again"));
    EXPECT_EQ(summary().first(), QStringLiteral("Files=5/5"));
}

TEST_F(ResultsControlsTest, TryOneRowAgainFromItsMenu)
{
    addMixture();
    EXPECT_EQ(menuAction(0, "Try Again"), nullptr);
    objects.answers.clear();
    menuAction(2, "Try Again")->trigger();
    ASSERT_TRUE(
        test::waitFor([&] { return objects.model.resultCount() == 4 && !objects.model.isProcessing(); }));
    EXPECT_EQ(names(), words({"d.jpg", "c.jpg", "a.jpg", "b.jpg"}));
    EXPECT_EQ(at(0, ResultsListModel::IsSuccessRole), true);
}

TEST_F(ResultsControlsTest, ClearTheListAndItsTotals)
{
    addMixture();
    sortBy("Name");
    chip("Clear")->click();
    EXPECT_TRUE(list->isHidden());
    EXPECT_EQ(summary().first(), QStringLiteral("Files=0/0"));
    addSuccesses(1);
    EXPECT_EQ(names(), words({"0.jpg"}));
    EXPECT_EQ(summary().first(), QStringLiteral("Files=1/1"));
}

TEST_F(ResultsControlsTest, LetTheirTextsGoBeforeTheTotalsAreTouched)
{
    addMixture();
    const int full = chip("Try Again")->width();
    window.resize(430, 700);
    QCoreApplication::processEvents();
    EXPECT_LT(chip("Try Again")->width(), full);
    window.resize(330, 700);
    QCoreApplication::processEvents();
    EXPECT_FALSE(offers("Clear"));
    for (const SummaryMetric* metric : list->findChildren<SummaryMetric*>())
        EXPECT_GE(metric->width(), metric->sizeHint().width());
}

} // namespace
} // namespace lumora
