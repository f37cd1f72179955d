// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/drop_window_view.h"

#include "tests/support/files.h"
#include "tests/ui/open_drop_window.h"
#include "ui/controls/link_button.h"
#include "ui/controls/styled_button.h"
#include "ui/dropwindow/drop_window_footer.h"
#include "ui/dropzone/cancel_button.h"
#include "ui/dropzone/drop_zone_picture.h"
#include "ui/results/results_list_view.h"
#include "ui/settings/settings_chip.h"
#include "ui/settings/settings_chip_group.h"
#include "ui/statistics/lifetime_stats_strip.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_logo_mark.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora {
namespace {

using test::waitFor;

class DropWindow : public testing::Test, protected test::OpenDropWindow
{
};

TEST_F(DropWindow, IsPaddedAndStacksItsPartsEighteenApart)
{
    view->resize(820, 500);
    QCoreApplication::processEvents();
    const QRect logo = placeOf(part<TidewellLogoMark>());
    const QRect zonePlace = placeOf(zone());
    const QRect strip = placeOf(part<LifetimeStatsStrip>());
    const QRect footer = placeOf(part<DropWindowFooter>());
    EXPECT_EQ(logo.left(), 22);
    EXPECT_EQ(placeOf(*part<TidewellLogoMark>().parentWidget()).top(), 42);
    EXPECT_EQ(zonePlace.left(), 22);
    EXPECT_EQ(zonePlace.width(), 820 - 44);
    EXPECT_EQ(strip.top() - zonePlace.bottom() - 1, 18);
    EXPECT_EQ(footer.top() - strip.bottom() - 1, 18);
    EXPECT_EQ(500 - footer.bottom() - 1, 22);
    EXPECT_EQ(view->minimumSize(), QSize(720, 320));
}

TEST_F(DropWindow, HasTheTitleAndTheChipsTwelveBesideTheLogo)
{
    auto* title = view->findChild<QLabel*>();
    EXPECT_EQ(title->text(), QStringLiteral("Lumora"));
    const QRect logo = placeOf(part<TidewellLogoMark>());
    EXPECT_EQ(logo.size(), QSize(46, 46));
    const QRect chips = placeOf(part<SettingsChipGroup>()).marginsRemoved(SettingsChipGroup::bleed);
    EXPECT_EQ(chips.left() - logo.right() - 1, 12);
    EXPECT_EQ(placeOf(*title).left() - logo.right() - 1, 12);
    EXPECT_EQ(chips.top() - placeOf(*title).bottom() - 1, 4);
}

TEST_F(DropWindow, GivesTheZoneAtLeast170WhereThereIsRoom)
{
    view->resize(820, 420);
    QCoreApplication::processEvents();
    EXPECT_GE(zone().height(), 170);
}

TEST_F(DropWindow, LetsTheZoneGiveWayInTheFirstWindowAndNeverTheFooter)
{
    EXPECT_LT(zone().height(), 170);
    EXPECT_EQ(placeOf(part<DropWindowFooter>()).bottom(), 360 - 22 - 1);
    view->resize(720, 320);
    QCoreApplication::processEvents();
    EXPECT_GE(zone().height(), DropZonePicture::leastHeight());
    EXPECT_EQ(placeOf(part<DropWindowFooter>()).bottom(), 320 - 22 - 1);
}

TEST_F(DropWindow, LetsStatisticsAndLinksGiveWayToARowAndTheZoneInTheLowestWindow)
{
    objects.addSuccess("/photos/a.jpg", 2000, 1000, "Optimized");
    view->resize(720, 320);
    QCoreApplication::processEvents();
    EXPECT_GE(part<ResultsListView>().height(), 58);
    EXPECT_GE(zone().height(), 60);
    EXPECT_FALSE(part<DropWindowFooter>().isVisible());
    EXPECT_FALSE(part<LifetimeStatsStrip>().isVisible());
    view->resize(820, 516);
    QCoreApplication::processEvents();
    EXPECT_TRUE(part<DropWindowFooter>().isVisible());
    EXPECT_TRUE(part<LifetimeStatsStrip>().isVisible());
}

TEST_F(DropWindow, CancelsByEscapeUnlessTheZoneLetsGoOfAPress)
{
    objects.runUntil(1, 4);
    QTest::keyPress(&zone(), Qt::Key_Space);
    QTest::keyClick(&zone(), Qt::Key_Escape);
    EXPECT_FALSE(objects.model.isCancelling());
    QTest::keyClick(&zone(), Qt::Key_Escape);
    EXPECT_TRUE(objects.model.isCancelling());
    objects.letWorkersGo();
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_EQ(zone().accessibleDescription(),
              QStringLiteral("Done. 3 optimized, 1 left out. Drop image files or folders here, or onto the "
                             "Lumora Dock icon."));
}

TEST_F(DropWindow, TellsThatTheSecondPressOfCancelEndsTheFilesInWork)
{
    objects.runUntil(1, 4);
    auto& cancel = part<CancelButton>();
    EXPECT_EQ(cancel.toolTip(), QStringLiteral("Cancel"));
    cancel.click();
    EXPECT_EQ(cancel.toolTip(), QStringLiteral("Cancel now"));
    EXPECT_EQ(objects.model.statusText(), QStringLiteral("Cancelling..."));
    objects.letWorkersGo();
    EXPECT_TRUE(waitForStatus("Done"));
}

TEST_F(DropWindow, KeepsEightWholeRowsInItsTallestOwnHeight)
{
    for (int i = 0; i < 9; ++i)
        objects.addSuccess("/photos/" + std::to_string(i) + ".jpg", 2000, 1000, "Optimized");
    view->resize(820, 922);
    QCoreApplication::processEvents();
    EXPECT_EQ(part<ResultsListView>().height(), 464);
    EXPECT_GT(zone().height(), 120);
    EXPECT_EQ(placeOf(part<DropWindowFooter>()).bottom(), 922 - 22 - 1);
}

TEST_F(DropWindow, OpensThePreferences)
{
    auto& button = part<StyledButton>();
    EXPECT_EQ(button.toolTip(), QStringLiteral("Preferences"));
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Preferences"));
    button.click();
    EXPECT_EQ(objects.preferencesOpened, 1);
}

TEST_F(DropWindow, ShowsProgressAndCancelOnlyWhileABatchRuns)
{
    auto& cancel = part<CancelButton>();
    EXPECT_FALSE(cancel.isVisible());
    objects.runUntil(1, 4);
    EXPECT_TRUE(cancel.isVisible());
    EXPECT_DOUBLE_EQ(zone().progress(), 0.25);
    QTest::keyClick(&cancel, Qt::Key_Return);
    objects.letWorkersGo();
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_LT(objects.model.resultCount(), 4);
    EXPECT_FALSE(cancel.isVisible());
}

TEST_F(DropWindow, TurnsItsIconOnlyWhereMotionIsWelcome)
{
    auto lively = objects.makeView(false);
    lively->show();
    objects.runUntil(1, 4);
    EXPECT_FALSE(zone().isTurning());
    EXPECT_TRUE(lively->findChild<DropZone*>()->isTurning());
    objects.letWorkersGo();
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_FALSE(lively->findChild<DropZone*>()->isTurning());
}

TEST_F(DropWindow, HasCancelAtTheTrailingCornerOfTheZoneInEitherDirection)
{
    const auto& cancel = part<CancelButton>();
    const auto place = [&] { return QRect(cancel.mapTo(&zone(), QPoint()), cancel.size()); };
    EXPECT_EQ(place(), QRect(zone().width() - 8 - 24, 8, 24, 24));
    view->setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(place(), QRect(8, 8, 24, 24));
}

TEST_F(DropWindow, GrowsWithTheDesktopsTextScaleWhileItShowsAndKeepsItsFooter)
{
    view->resize(900, 700);
    QCoreApplication::processEvents();
    const int chip = part<SettingsChip>().height();
    const int strip = part<LifetimeStatsStrip>().height();
    fonts::install(*qApp, 2);
    ASSERT_TRUE(waitFor([&] { return part<SettingsChip>().height() == 2 * (chip - 8) + 8; }));
    EXPECT_GT(part<LifetimeStatsStrip>().height(), strip);
    EXPECT_EQ(part<CancelButton>().size(), QSize(48, 48));
    EXPECT_EQ(placeOf(part<DropWindowFooter>()).bottom(), 700 - 22 - 1);
    fonts::install(*qApp, 1);
    EXPECT_TRUE(waitFor([&] { return part<LifetimeStatsStrip>().height() == strip; }));
}

// As the toolkit finds the widget that is asked about a drag at this place.
QWidget* takerOfDrops(QWidget& window, const QPoint& place)
{
    QWidget* widget = window.childAt(place);
    while (widget && !widget->acceptDrops())
        widget = widget->parentWidget();
    return widget;
}

TEST_F(DropWindow, TakesDropsOnResultsHeaderAndFooterAndShowsThemOnItsZone)
{
    objects.addSuccess("/photos/a.jpg", 2000, 1000, "Optimized");
    view->resize(820, 516);
    QCoreApplication::processEvents();
    const std::filesystem::path file = objects.folder / "dropped.png";
    test::writeFile(file, "x");
    QMimeData files;
    files.setData(QStringLiteral("text/uri-list"), QByteArray::fromStdString("file://" + file.string()));
    for (const QPoint& place :
         {placeOf(part<ResultsListView>()).center(), placeOf(part<SettingsChip>()).center(),
          placeOf(part<LifetimeStatsStrip>()).center()}) {
        ASSERT_EQ(takerOfDrops(*view, place), view.get());
        QDragEnterEvent enter(place, Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view.get(), &enter);
        EXPECT_TRUE(enter.isAccepted());
        EXPECT_TRUE(zone().isTargeted());
        QDragLeaveEvent leave;
        QCoreApplication::sendEvent(view.get(), &leave);
        EXPECT_FALSE(zone().isTargeted());
    }
    const auto before = objects.expanded.size();
    QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.get(), &enter);
    QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.get(), &drop);
    ASSERT_TRUE(waitFor([&] { return objects.expanded.size() == before + 1; }));
    EXPECT_EQ(objects.expanded.back(), std::vector<std::filesystem::path>{file});
    EXPECT_FALSE(zone().isTargeted());
}

TEST(DropWindowFooter, ShowsTheCompactLinkOnlyWhereTheFullOneDoesNotFit)
{
    DropWindowFooter footer;
    const auto links = footer.findChildren<TidewellLink*>();
    footer.resize(footer.sizeHint().width(), 20);
    footer.show();
    EXPECT_TRUE(links[0]->isVisible());
    EXPECT_FALSE(links[1]->isVisible());
    footer.resize(footer.sizeHint().width() - 1, 20);
    EXPECT_FALSE(links[0]->isVisible());
    EXPECT_TRUE(links[1]->isVisible());
    EXPECT_EQ(links[1]->text(), QStringLiteral("Tidewell"));
}

} // namespace
} // namespace lumora
