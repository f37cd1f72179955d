// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/bus/bus_call.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>

namespace lumora {
namespace {

QDBusPendingCall send(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds timeout)
{
    if (bus.isConnected()) return bus.asyncCall(call, static_cast<int>(timeout.count()));
    // The toolkit would never finish it.
    return QDBusPendingCall::fromError(
        QDBusError(QDBusError::Disconnected, QStringLiteral("There is no bus.")));
}

} // namespace

void callOnBus(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds timeout,
               QObject* context, BusAnswer answered)
{
    auto* watcher = new QDBusPendingCallWatcher(send(bus, call, timeout), context);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, context,
                     [watcher, answered = std::move(answered)] {
                         watcher->deleteLater();
                         answered(*watcher);
                     });
}

} // namespace lumora
