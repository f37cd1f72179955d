// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_view.h"

#include "tests/ui/history/history_test.h"
#include "ui/controls/elided_label.h"
#include "ui/history/history_heading.h"
#include "ui/history/history_notice.h"
#include "ui/history/weeks_chart.h"

#include <algorithm>

namespace lumora {
namespace {

using test::HistoryViewTest;

TEST_F(HistoryViewTest, ListsTheBatchesUnderTheirDaysAndTheFilesOfTheNewest)
{
    add({written("/in/old.jpg")}, 9);
    add({written("/in/a.jpg"), failed("/in/b.png")});
    open();
    const QStringList rows = textsOf(batches(), Qt::AccessibleTextRole);
    ASSERT_EQ(rows.size(), 4);
    EXPECT_EQ(rows[0], QStringLiteral("Today, 2 files, saved 3.1 MB"));
    EXPECT_TRUE(rows[1].startsWith(QStringLiteral("Today ")));
    EXPECT_TRUE(rows[1].endsWith(QStringLiteral(", 2 files, saved 3.1 MB")));
    EXPECT_TRUE(rows[2].endsWith(QStringLiteral(", 1 file, saved 3.1 MB")));
    EXPECT_EQ(textsOf(batches(), Qt::AccessibleDescriptionRole)[1],
              QStringLiteral("webp, quality 82, by lumora"));
    EXPECT_EQ(names(), QStringList({"a.jpg", "b.png"}));
    EXPECT_TRUE(heading().title().endsWith(QStringLiteral(", 2 files")));
    EXPECT_EQ(heading().facts(), QStringLiteral("webp, quality 82, by lumora"));
}

TEST_F(HistoryViewTest, SaysThatAHistoryWasSetAside)
{
    add({written("/in/a.jpg")});
    const std::filesystem::path file = history->file();
    history.reset();
    test::writeFile(file, std::string(5000, 'x'));
    std::filesystem::remove(file.native() + "-wal");
    history = std::make_shared<History>(file, [](const std::string&) {});
    const QString complaint = QStringLiteral("The history is damaged; it is kept as ");
    open();
    EXPECT_TRUE(view->findChild<HistoryNotice*>()->text().contains(complaint));

    add({written("/in/b.jpg")});
    view->refresh();
    ASSERT_TRUE(test::waitFor([&] { return names() == QStringList("b.jpg"); }));
    const auto labels = view->findChildren<ElidedLabel*>();
    EXPECT_TRUE(std::ranges::any_of(labels, [&](const ElidedLabel* label) {
        return label->isVisible() && label->text().startsWith(complaint);
    }));
}

TEST_F(HistoryViewTest, ShowsTheFilesOfTheChosenBatch)
{
    add({written("/in/old.jpg")}, 9);
    add({written("/in/a.jpg")});
    open();
    batchList().setCurrentIndex(batches().index(3));
    ASSERT_TRUE(settle());
    EXPECT_EQ(names(), QStringList("old.jpg"));
    QTest::mouseClick(batchList().viewport(), Qt::LeftButton, {},
                      batchList().visualRect(batches().index(0)).center());
    EXPECT_EQ(batchList().currentIndex().row(), 3);
}

TEST_F(HistoryViewTest, SaysWhatBecameOfTheFiles)
{
    FileRecord kept = real("kept.jpg");
    FileRecord changed = real("changed.jpg");
    FileRecord gone = real("gone.jpg");
    test::writeFile(*changed.output, "longer than before");
    std::filesystem::remove(*gone.output);
    std::filesystem::remove(gone.source);
    add({kept, changed, gone});
    history->markUndone({history->find({})->front().id});
    open();
    EXPECT_TRUE(spoken(0).endsWith(QStringLiteral("Output there, Original there")))
        << spoken(0).toStdString();
    EXPECT_TRUE(spoken(1).endsWith(QStringLiteral("Output changed since, Original there")));
    EXPECT_TRUE(spoken(2).endsWith(QStringLiteral("Undone, Original gone")));
    EXPECT_TRUE(spoken(0).startsWith(QStringLiteral("Optimized to WebP., ")));
}

TEST_F(HistoryViewTest, LooksAgainWhenTheUserComesBack)
{
    const FileRecord file = real("a.jpg");
    add({file});
    open();
    std::filesystem::remove(*file.output);
    QEvent activation(QEvent::WindowActivate);
    QCoreApplication::sendEvent(view.get(), &activation);
    EXPECT_TRUE(test::waitFor([&] { return spoken(0).contains(QStringLiteral("Output gone")); }));
}

TEST_F(HistoryViewTest, FindsFilesOfAllBatchesByName)
{
    add({written("/in/Sea.jpg"), written("/in/hill.jpg")}, 30);
    add({written("/in/seaside.png")});
    open();
    ASSERT_TRUE(type("SEA"));
    EXPECT_EQ(names(), QStringList({"seaside.png", "Sea.jpg"}));
    EXPECT_EQ(heading().title(), QStringLiteral("2 files found"));
    EXPECT_FALSE(batchList().isVisible());
    ASSERT_TRUE(type("nothing of this name"));
    EXPECT_EQ(heading().title(), QStringLiteral("0 files found"));
    ASSERT_TRUE(type(""));
    EXPECT_TRUE(batchList().isVisible());
    EXPECT_EQ(names(), QStringList("seaside.png"));
}

TEST_F(HistoryViewTest, FollowsTheLastOfManyLettersTyped)
{
    add({written("/in/a1.jpg"), written("/in/b1.jpg")});
    open();
    for (const char* text : {"1", "b", "b1", "a1"})
        field().setText(QLatin1String(text));
    ASSERT_TRUE(settle());
    EXPECT_EQ(names(), QStringList("a1.jpg"));
}

TEST_F(HistoryViewTest, ShowsOnlyWhatTheFilterLetsPass)
{
    add({written("/in/a.jpg")}, 3);
    add({written("/in/b.jpg"), failed("/in/c.jpg")});
    open();
    search().setFilter(HistoryFilter::notWritten);
    ASSERT_TRUE(settle());
    EXPECT_EQ(batches().rowCount(), 2);
    EXPECT_EQ(names(), QStringList("c.jpg"));
    EXPECT_TRUE(heading().title().endsWith(QStringLiteral(", 1 of 2 files")));
    search().setFilter(HistoryFilter::undone);
    ASSERT_TRUE(settle());
    EXPECT_EQ(batches().rowCount(), 0);
    EXPECT_EQ(names(), QStringList());
    EXPECT_EQ(batchList().placeholder(), QStringLiteral("No batch has such files."));
    search().setFilter(HistoryFilter::all);
    ASSERT_TRUE(settle());
    EXPECT_EQ(batches().rowCount(), 4);
    EXPECT_EQ(names(), QStringList({"b.jpg", "c.jpg"}));
}

TEST_F(HistoryViewTest, SaysThatNothingIsRememberedAndWhatWouldBe)
{
    open();
    const auto* notice = view->findChild<HistoryNotice*>();
    EXPECT_TRUE(notice->isVisible());
    EXPECT_FALSE(field().isVisible());
    EXPECT_TRUE(notice->text().startsWith(QStringLiteral("Nothing is remembered yet.")));
    EXPECT_TRUE(notice->text().contains(QStringLiteral("\"Remember what was done\"")));
    press(Qt::Key_F, Qt::ControlModifier);
    press(Qt::Key_7);
    EXPECT_TRUE(field().text().isEmpty()); // nobody would see it
    add({written("/in/a.jpg")});
    view->refresh();
    EXPECT_TRUE(test::waitFor([&] { return field().isVisible() && files().rowCount() == 1; }));
    EXPECT_FALSE(notice->isVisible());
}

TEST_F(HistoryViewTest, SaysThatTheHistoryCannotBeRead)
{
    history = std::make_shared<History>("/dev/null/history.sqlite", [](const auto&) {});
    open();
    const auto* notice = view->findChild<HistoryNotice*>();
    EXPECT_TRUE(notice->isVisible());
    EXPECT_TRUE(notice->text().startsWith(QStringLiteral("The history cannot be read.")));
}

TEST_F(HistoryViewTest, KeepsWhatIsChosenWhenItIsRefreshed)
{
    add({written("/in/old.jpg"), written("/in/older.jpg")}, 9);
    open();
    fileList().setCurrentIndex(files().index(1));
    add({written("/in/a.jpg")});
    history->markUndone({files().found(files().index(1)).id});
    view->refresh();
    ASSERT_TRUE(test::waitFor([&] { return batches().rowCount() == 4 && files().isListed(); }));
    EXPECT_EQ(names(), QStringList({"old.jpg", "older.jpg"}));
    EXPECT_EQ(fileList().currentIndex().row(), 1);
    EXPECT_TRUE(test::waitFor([&] { return spoken(1).contains(QStringLiteral("Undone")); }));
    EXPECT_TRUE(textsOf(batches(), Qt::AccessibleTextRole)[3].endsWith(QStringLiteral(", 1 undone")));
}

TEST_F(HistoryViewTest, ReadsTheRowsInSightAlone)
{
    add(many(1000));
    open();
    ASSERT_EQ(files().rowCount(), 1000);
    EXPECT_EQ(files().index(0).data().toString(), QStringLiteral("0.jpg"));
    EXPECT_FALSE(files().record(files().index(500)));
    fileList().setCurrentIndex(files().index(999));
    EXPECT_TRUE(
        test::waitFor([&] { return files().index(999).data().toString() == QStringLiteral("999.jpg"); }));
}

TEST_F(HistoryViewTest, TellsWhatWasSavedByWeek)
{
    open();
    const auto* chart = view->findChild<WeeksChart*>();
    EXPECT_EQ(chart->accessibleDescription(), QStringLiteral("Nothing in the last 26 weeks"));
    add({written("/in/a.jpg")});
    add({written("/in/b.jpg")}, 21);
    view->refresh();
    ASSERT_TRUE(test::waitFor([&] { return batches().rowCount() == 4; }));
    EXPECT_EQ(chart->accessibleDescription().count(QStringLiteral("saved 3.1 MB")), 2);
    EXPECT_TRUE(chart->isVisible());
    view->resize(560, 400);
    EXPECT_FALSE(chart->isVisible());
}

} // namespace
} // namespace lumora
