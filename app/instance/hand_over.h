// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Delivers a launch to the running program over the bus, in as many calls as it takes.
#pragma once

#include "app/instance/launch_request.h"

#include <QDBusConnection>

#include <chrono>

class QDBusMessage;

namespace lumora {

class HandOver
{
public:
    HandOver(QDBusConnection bus, std::chrono::milliseconds replyTimeout);

    // True when all of the request was acknowledged. What was acknowledged leaves the request, so that
    // another try sends the rest only.
    bool deliver(LaunchRequest& request) const;

private:
    bool deliverFiles(LaunchRequest& request) const;
    bool acknowledged(const QDBusMessage& message) const;

    QDBusConnection m_bus;
    std::chrono::milliseconds m_replyTimeout;
};

} // namespace lumora
