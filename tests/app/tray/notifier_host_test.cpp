// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/notifier_host.h"

#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"

#include <QDBusMessage>

#include <gtest/gtest.h>

using namespace lumora;
using test::waitFor;

namespace {

// The desktop's registry of status items and of the panels that show them.
class FakeRegistry : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

public:
    FakeRegistry(QDBusConnection bus, bool hasHost) : m_bus(bus), m_hasHost(hasHost)
    {
        bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                           QDBusConnection::ExportAllProperties);
        bus.registerService(QStringLiteral("org.kde.StatusNotifierWatcher"));
    }
    bool hasHost() const
    {
        m_wasAsked = true;
        return m_hasHost;
    }
    bool wasAsked() const { return m_wasAsked; }
    void addHost()
    {
        m_hasHost = true;
        m_bus.send(QDBusMessage::createSignal(QStringLiteral("/StatusNotifierWatcher"),
                                              QStringLiteral("org.kde.StatusNotifierWatcher"),
                                              QStringLiteral("StatusNotifierHostRegistered")));
    }

private:
    QDBusConnection m_bus;
    bool m_hasHost;
    mutable bool m_wasAsked = false;
};

class NotifierHostTest : public testing::Test
{
protected:
    void listenTo(NotifierHost& host)
    {
        QObject::connect(&host, &NotifierHost::present, &m_context, [this] { m_isPresent = true; });
    }

    test::PrivateBus m_bus;
    QDBusConnection m_desktop = m_bus.connect();
    QDBusConnection m_client = m_bus.connect();
    QObject m_context;
    bool m_isPresent = false;
};

TEST_F(NotifierHostTest, APanelThatStandsAlreadyIsFound)
{
    const FakeRegistry registry(m_desktop, true);
    NotifierHost host(m_client);
    listenTo(host);
    EXPECT_TRUE(waitFor([&] { return m_isPresent; }));
}

TEST_F(NotifierHostTest, APanelThatComesLaterIsFoundThen)
{
    FakeRegistry registry(m_desktop, false);
    NotifierHost host(m_client);
    listenTo(host);
    ASSERT_TRUE(waitFor([&] { return registry.wasAsked(); }));
    EXPECT_FALSE(m_isPresent);
    registry.addHost();
    EXPECT_TRUE(waitFor([&] { return m_isPresent; }));
}

TEST_F(NotifierHostTest, ADesktopThatComesLaterWithItsPanelIsFoundThen)
{
    NotifierHost host(m_client);
    listenTo(host);
    const FakeRegistry registry(m_desktop, true);
    EXPECT_TRUE(waitFor([&] { return m_isPresent; }));
}

} // namespace

#include "notifier_host_test.moc"
