// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/batch_controls.h"

#include "tests/ui/open_drop_window.h"
#include "ui/dropzone/cancel_button.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora {
namespace {

class BatchControlsTest : public testing::Test, protected test::OpenDropWindow
{
protected:
    BatchControls& controls() { return part<BatchControls>(); }
    QPointer<QMenu> openMenu() { return controls().findChild<QMenu*>(); }
    static QAction* item(const QMenu& menu, const char* text)
    {
        for (QAction* action : menu.actions()) {
            if (action->text() == QLatin1String(text)) return action;
        }
        return nullptr;
    }
    void choose(const char* text)
    {
        QAction* action = item(*controls().makeMenu(), text);
        ASSERT_TRUE(action && action->isEnabled()) << text;
        action->trigger();
    }
};

TEST_F(BatchControlsTest, PauseAndResumeTheBatchFromTheirMenu)
{
    objects.runUntil(1, 4);
    choose("Pause");
    EXPECT_EQ(objects.model.statusText(), QStringLiteral("Paused at 1 of 4"));
    EXPECT_FALSE(item(*controls().makeMenu(), "Pause"));
    objects.letWorkersGo();
    choose("Resume");
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_EQ(objects.model.resultCount(), 4);
}

TEST_F(BatchControlsTest, StandTheIconStillWhileTheBatchIsPaused)
{
    auto lively = objects.makeView(false);
    lively->show();
    objects.runUntil(1, 4);
    const auto* zone = lively->findChild<DropZone*>();
    EXPECT_TRUE(zone->isTurning());
    objects.model.setPaused(true);
    EXPECT_FALSE(zone->isTurning());
    objects.model.setPaused(false);
    EXPECT_TRUE(zone->isTurning());
}

TEST_F(BatchControlsTest, CancelAtOnceOrAfterTheFilesInWork)
{
    objects.runUntil(1, 4);
    choose("Cancel After Files in Work");
    EXPECT_TRUE(objects.model.isCancelling());
    const QMenu* menu = controls().makeMenu();
    EXPECT_FALSE(item(*menu, "Pause")->isEnabled());
    EXPECT_FALSE(item(*menu, "Cancel After Files in Work")->isEnabled());
    EXPECT_TRUE(item(*menu, "Cancel Now")->isEnabled());
}

TEST_F(BatchControlsTest, OpenTheirMenuByPointerByKeyAndAsContextMenuOfTheCross)
{
    objects.runUntil(1, 4);
    auto* more = controls().findChild<ZoneButton*>();
    QTest::mouseClick(more, Qt::LeftButton);
    ASSERT_TRUE(openMenu() && openMenu()->isVisible());
    delete openMenu();
    QTest::keyClick(more, Qt::Key_Return);
    ASSERT_TRUE(openMenu() && openMenu()->isVisible());
    delete openMenu();
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(3, 3), QPoint(3, 3));
    QCoreApplication::sendEvent(&part<CancelButton>(), &event);
    ASSERT_TRUE(openMenu() && openMenu()->isVisible());
}

} // namespace
} // namespace lumora
