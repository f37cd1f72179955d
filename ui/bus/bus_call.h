// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A call to another program over the session bus that nobody waits for. Main thread.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>

#include <chrono>
#include <functional>

class QObject;

namespace lumora {

using BusAnswer = std::function<void(const QDBusPendingCall& answer)>;

// Sends the call and hands its answer on once, through the event loop: the reply, or an error where there is
// no bus, nobody to answer, or no answer in time. Nothing is handed on once `context` is gone.
void callOnBus(const QDBusConnection& bus, const QDBusMessage& call, std::chrono::milliseconds timeout,
               QObject* context, BusAnswer answered);

} // namespace lumora
