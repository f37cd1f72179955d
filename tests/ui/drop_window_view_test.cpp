// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/drop_window_view.h"

#include "tests/ui/drop_window_objects.h"
#include "ui/cancel_button.h"
#include "ui/drop_window_footer.h"
#include "ui/drop_zone.h"
#include "ui/drop_zone_picture.h"
#include "ui/file_uris.h"
#include "ui/fonts.h"
#include "ui/lifetime_stats_strip.h"
#include "ui/link_button.h"
#include "ui/results_list.h"
#include "ui/results_list_view.h"
#include "ui/settings_chip.h"
#include "ui/settings_chip_group.h"
#include "ui/styled_button.h"
#include "ui/tidewell_logo_mark.h"

#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QTest>

#include <gmock/gmock.h>

#include <fstream>

namespace lumora {
namespace {

using std::filesystem::path;
using test::waitFor;

class DropWindow : public testing::Test
{
protected:
    DropWindow() : view(objects.makeView())
    {
        view->resize(820, 360);
        view->show();
        QCoreApplication::processEvents();
    }

    template <class Part>
    Part& part()
    {
        return *view->findChild<Part*>();
    }
    DropZone& zone() { return part<DropZone>(); }
    QRect placeOf(const QWidget& widget) { return {widget.mapTo(view.get(), QPoint()), widget.size()}; }

    static std::unique_ptr<QMimeData> files(const std::vector<path>& paths)
    {
        auto data = std::make_unique<QMimeData>();
        QByteArray list;
        for (const path& file : paths)
            list += fileUri(file) + "\r\n";
        data->setData(QStringLiteral("text/uri-list"), list);
        return data;
    }
    bool drag(const QMimeData& data)
    {
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(&zone(), &enter);
        return enter.isAccepted();
    }
    bool drop(const QMimeData& data)
    {
        drag(data);
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&zone(), &event);
        return event.isAccepted();
    }
    path makeFile(const char* name)
    {
        const path file = objects.folder / name;
        std::ofstream(file) << "x";
        return file;
    }
    // What the model was given to expand by its next batch.
    std::vector<path> nextBatch()
    {
        EXPECT_TRUE(waitFor([this] {
            const std::lock_guard lock(objects.mutex);
            return !objects.expanded.empty();
        }));
        const std::lock_guard lock(objects.mutex);
        return objects.expanded.empty() ? std::vector<path>{} : objects.expanded.back();
    }
    bool waitForStatus(const char* text)
    {
        return waitFor([&] { return objects.model.statusText() == QLatin1String(text); });
    }

    test::DropWindowObjects objects;
    std::unique_ptr<DropWindowView> view;
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

TEST_F(DropWindow, HandsADropOfNothingUsableOnAsAnEmptyList)
{
    EXPECT_TRUE(drop(*files({makeFile("notes.txt"), objects.folder / "gone"})));
    EXPECT_TRUE(waitForStatus("No supported image files found"));
    EXPECT_TRUE(objects.expanded.empty());
}

TEST_F(DropWindow, HandsAFolderOnUnchanged)
{
    drop(*files({objects.folder.path()}));
    EXPECT_THAT(nextBatch(), testing::ElementsAre(objects.folder.path()));
}

TEST_F(DropWindow, HandsOneDropOnAsOneBatchWithoutWhatIsNoImage)
{
    const path first = makeFile("a b#%.png");
    const path second = makeFile("\xE9\xFF.jpg");
    drop(*files({first, makeFile("notes.txt"), second}));
    EXPECT_THAT(nextBatch(), testing::ElementsAre(first, second));
}

TEST_F(DropWindow, TakesNothingFromRemoteAddresses)
{
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "https://example.invalid/a.png\r\n");
    EXPECT_FALSE(drag(data));
    EXPECT_FALSE(zone().isTargeted());
}

TEST_F(DropWindow, TakesTheListWhereThePortalHasNoFilesForTheDrop)
{
    const path file = makeFile("a.png");
    const auto data = files({file});
    data->setData(QStringLiteral("application/vnd.portal.filetransfer"), "unknown key");
    drop(*data);
    EXPECT_THAT(nextBatch(), testing::ElementsAre(file));
}

TEST_F(DropWindow, BearsAnAnnouncedListThatIsEmpty)
{
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "");
    data.setUrls({});
    drop(data);
    QMimeData comment;
    comment.setData(QStringLiteral("text/uri-list"), "# nothing yet\r\n");
    EXPECT_TRUE(drop(comment));
    EXPECT_TRUE(waitForStatus("No supported image files found"));
}

TEST_F(DropWindow, RefusesADragOfText)
{
    QMimeData data;
    data.setText(QStringLiteral("/photos/a.png"));
    EXPECT_FALSE(drag(data));
}

TEST_F(DropWindow, IsTargetedWhileADragHovers)
{
    const auto data = files({"/photos/a.png"});
    EXPECT_TRUE(drag(*data));
    EXPECT_TRUE(zone().isTargeted());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&zone(), &leave);
    EXPECT_FALSE(zone().isTargeted());
    drop(*data);
    EXPECT_FALSE(zone().isTargeted());
}

TEST_F(DropWindow, ShowsTheArrowsWhileABatchRunsAndStillTakesDrops)
{
    EXPECT_EQ(zone().iconName(), QStringLiteral("square.and.arrow.down"));
    objects.runUntil(1, 4);
    EXPECT_EQ(zone().iconName(), QStringLiteral("arrow.triangle.2.circlepath"));
    const path late = makeFile("late.png");
    drop(*files({late}));
    objects.letWorkersGo();
    EXPECT_TRUE(waitFor([&] { return objects.model.resultCount() == 5; }));
    EXPECT_EQ(objects.model.resultAt(0).sourceURL, late);
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_EQ(zone().iconName(), QStringLiteral("square.and.arrow.down"));
}

TEST_F(DropWindow, ShowsProgressAndCancelOnlyWhileABatchRuns)
{
    auto& cancel = part<CancelButton>();
    EXPECT_TRUE(cancel.isHidden());
    objects.runUntil(1, 4);
    EXPECT_FALSE(cancel.isHidden());
    EXPECT_DOUBLE_EQ(zone().progress(), 0.25);
    QTest::keyClick(&cancel, Qt::Key_Return);
    objects.letWorkersGo();
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_LT(objects.model.resultCount(), 4);
    EXPECT_TRUE(cancel.isHidden());
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

TEST_F(DropWindow, OpensTheChooserByMouseSpaceAndReturn)
{
    objects.chosen = {makeFile("a.png"), makeFile("notes.txt")};
    const std::function<void()> roads[] = {[this] { QTest::mouseClick(&zone(), Qt::LeftButton); },
                                           [this] { QTest::keyClick(&zone(), Qt::Key_Space); },
                                           [this] { QTest::keyClick(&zone(), Qt::Key_Return); }};
    for (const auto& road : roads) {
        const int before = objects.model.resultCount();
        road();
        EXPECT_TRUE(waitFor([&] { return objects.model.resultCount() == before + 1; }));
        EXPECT_TRUE(waitForStatus("Done"));
    }
    EXPECT_THAT(nextBatch(), testing::ElementsAre(objects.chosen[0]));
}

TEST_F(DropWindow, TakesCopiedFilesByPasting)
{
    const path file = makeFile("a.png");
    QGuiApplication::clipboard()->setMimeData(files({file}).release());
    QTest::keyClick(view.get(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_THAT(nextBatch(), testing::ElementsAre(file));
}

TEST_F(DropWindow, TakesFilesCopiedInTheFormOfSomeFileManagers)
{
    const path file = makeFile("a.png");
    auto* data = new QMimeData;
    data->setData(QStringLiteral("x-special/gnome-copied-files"), "copy\n" + fileUri(file));
    QGuiApplication::clipboard()->setMimeData(data);
    view->paste();
    EXPECT_THAT(nextBatch(), testing::ElementsAre(file));
}

TEST_F(DropWindow, IgnoresPastedText)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("hello"));
    view->paste();
    EXPECT_EQ(objects.model.statusText(), QStringLiteral("Drop images here"));
}

TEST_F(DropWindow, HasCancelAtTheTrailingCornerOfTheZoneInEitherDirection)
{
    const auto& cancel = part<CancelButton>();
    EXPECT_EQ(cancel.geometry(), QRect(zone().width() - 8 - 24, 8, 24, 24));
    view->setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(cancel.geometry(), QRect(8, 8, 24, 24));
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
