// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/desktop_files.h"
#include "app/desktop/desktop_notifications.h"
#include "app/desktop/desktop_settings.h"
#include "app/desktop/launcher_progress.h"
#include "tests/app/fake_desktop.h"
#include "tests/app/fake_model.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"

#include <QCoreApplication>
#include <QDesktopServices>

#include <gtest/gtest.h>

using namespace lumora;
using test::FakeFileManager;
using test::FakeNotifications;
using test::FakePortal;
using test::waitFor;

namespace {

class DesktopServices : public testing::Test
{
protected:
    test::PrivateBus m_bus;
    QDBusConnection m_desktop = m_bus.connect();
    QDBusConnection m_client = m_bus.connect();
};

TEST_F(DesktopServices, TheFileBrowserShowsTheFileByTheBytesOfItsName)
{
    FakeFileManager manager(m_desktop);
    showInFileBrowser(m_client, "/pictures/a b#\xE9.png");
    ASSERT_TRUE(waitFor([&] { return !manager.shown.isEmpty(); }));
    EXPECT_EQ(manager.shown, QStringList{QStringLiteral("file:///pictures/a%20b%23%E9.png")});
}

TEST_F(DesktopServices, WithoutAFileBrowserTheFolderIsOpened)
{
    test::OpenedUrls opened;
    showInFileBrowser(m_client, "/pictures/a.png");
    ASSERT_TRUE(waitFor([&] { return !opened.urls.isEmpty(); }));
    EXPECT_EQ(opened.urls.first(), QUrl(QStringLiteral("file:///pictures")));
}

TEST_F(DesktopServices, WithoutABusTheFolderIsOpened)
{
    test::OpenedUrls opened;
    showInFileBrowser(QDBusConnection(QStringLiteral("no such bus")), "/pictures/a.png");
    ASSERT_TRUE(waitFor([&] { return !opened.urls.isEmpty(); }));
    EXPECT_EQ(opened.urls.first(), QUrl(QStringLiteral("file:///pictures")));
}

TEST_F(DesktopServices, ANotificationCarriesItsTextAsTextAndAShowAction)
{
    FakeNotifications service(m_desktop);
    DesktopNotifications notifications(m_client);
    notifications.notify(QStringLiteral("Optimized 2 images"), QStringLiteral("a < b"));
    ASSERT_TRUE(waitFor([&] { return service.count == 1; }));
    EXPECT_EQ(service.summary, QStringLiteral("Optimized 2 images"));
    EXPECT_EQ(service.body, QStringLiteral("a &lt; b"));
    EXPECT_TRUE(service.actions.contains(QStringLiteral("Show")));
}

TEST_F(DesktopServices, ChoosingShowOfTheOwnNotificationAsksForTheWindow)
{
    FakeNotifications service(m_desktop);
    DesktopNotifications notifications(m_client);
    int shows = 0;
    QObject::connect(&notifications, &DesktopNotifications::showRequested, [&] { ++shows; });
    notifications.notify(QStringLiteral("first"), {});
    // The second one replaces the first, so the answer to the first has arrived.
    ASSERT_TRUE(waitFor([&] {
        if (service.replaced == 0) notifications.notify(QStringLiteral("next"), {});
        return service.replaced != 0;
    }));
    service.invoke(service.lastId + 1, QStringLiteral("show"));
    service.invoke(service.lastId, QStringLiteral("show"));
    ASSERT_TRUE(waitFor([&] { return shows > 0; }));
    EXPECT_EQ(shows, 1);
}

TEST_F(DesktopServices, ThePortalSaysWhetherToMoveAndWhetherItIsDark)
{
    FakePortal portal(m_desktop);
    portal.settings[QStringLiteral("org.freedesktop.appearance")] = {{QStringLiteral("color-scheme"), 2U}};
    portal.settings[QStringLiteral("org.gnome.desktop.interface")] = {
        {QStringLiteral("enable-animations"), false}};
    DesktopSettings settings(m_client);
    EXPECT_FALSE(settings.reducesMotion());
    ASSERT_TRUE(waitFor([&] { return settings.reducesMotion(); }));
    EXPECT_EQ(settings.colorScheme(), ColorScheme::light);
}

TEST_F(DesktopServices, AChangedSettingIsFollowed)
{
    FakePortal portal(m_desktop);
    DesktopSettings settings(m_client);
    ASSERT_TRUE(waitFor([&] { return portal.wasRead; }));
    portal.change(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("reduced-motion"), 1U);
    EXPECT_TRUE(waitFor([&] { return settings.reducesMotion(); }));
}

TEST_F(DesktopServices, WithoutAPortalNothingIsReduced)
{
    DesktopSettings settings(m_client);
    QCoreApplication::processEvents();
    EXPECT_FALSE(settings.reducesMotion());
    EXPECT_EQ(settings.colorScheme(), ColorScheme::noPreference);
}

TEST_F(DesktopServices, TheLauncherShowsProgressWhileABatchRunsAndNoneAfterwards)
{
    test::LauncherEntries entries(m_desktop);
    test::FakeModel model;
    LauncherProgress progress(m_client, model.model());
    ASSERT_TRUE(model.finish(4));
    ASSERT_TRUE(waitFor([&] { return !entries.updates.isEmpty() && !entries.isVisible(); }));
    EXPECT_EQ(entries.application, QStringLiteral("application://example.tidewell.Lumora.desktop"));
    EXPECT_TRUE(entries.wasVisible);
    for (const double value : entries.updates)
        EXPECT_TRUE(value >= 0 && value <= 1) << value;
}

} // namespace
