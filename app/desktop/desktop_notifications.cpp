// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/desktop_notifications.h"

#include "app/instance/application_id.h"
#include "ui/bus/bus_call.h"

#include <QDBusPendingReply>
#include <QVariantMap>

namespace lumora {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString objectPath = QStringLiteral("/org/freedesktop/Notifications");
constexpr std::chrono::seconds replyTimeout(5);
constexpr int serversOwnExpiry = -1;

} // namespace

DesktopNotifications::DesktopNotifications(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus))
{
    m_bus.connect(service, objectPath, service, QStringLiteral("ActionInvoked"), this,
                  SLOT(invoked(quint32, QString)));
}

void DesktopNotifications::notify(const QString& summary, const QString& body)
{
    // "default" is the click on the message itself.
    const QStringList actions{QStringLiteral("default"), QStringLiteral("Show"), QStringLiteral("show"),
                              QStringLiteral("Show")};
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QString(applicationId)}};
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, objectPath, service, QStringLiteral("Notify"));
    call << QStringLiteral("Lumora") << m_id << QString(applicationId) << summary << body.toHtmlEscaped()
         << actions << hints << serversOwnExpiry;
    callOnBus(m_bus, call, replyTimeout, this, [this](const QDBusPendingCall& answer) {
        const QDBusPendingReply<quint32> reply = answer;
        if (reply.isValid()) m_id = reply.value();
    });
}

void DesktopNotifications::invoked(quint32 id, const QString& action)
{
    if (id != 0 && id == m_id && (action == QLatin1String("show") || action == QLatin1String("default")))
        Q_EMIT showRequested();
}

} // namespace lumora
