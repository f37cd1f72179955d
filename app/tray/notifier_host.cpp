// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/notifier_host.h"

#include "ui/bus/bus_call.h"

#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

namespace lumora {
namespace {

const QString service = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString objectPath = QStringLiteral("/StatusNotifierWatcher");
constexpr std::chrono::seconds replyTimeout(5);

} // namespace

NotifierHost::NotifierHost(QDBusConnection bus, QObject* parent) : QObject(parent), m_bus(std::move(bus))
{
    auto* watcher = new QDBusServiceWatcher(service, m_bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &NotifierHost::ask);
    m_bus.connect(service, objectPath, service, QStringLiteral("StatusNotifierHostRegistered"), this,
                  SLOT(ask()));
    ask();
}

void NotifierHost::ask()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        service, objectPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << service << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    callOnBus(m_bus, call, replyTimeout, this, [this](const QDBusPendingCall& answer) {
        const QDBusPendingReply<QDBusVariant> reply = answer;
        if (reply.isValid() && reply.value().variant().toBool()) Q_EMIT present();
    });
}

} // namespace lumora
