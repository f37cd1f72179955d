// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Waits on observable state through the event loop.
#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>
#include <QTimer>

#include <chrono>

namespace lumora::test {

// True as soon as the condition holds; false after ten seconds.
template <class Condition>
bool waitFor(Condition condition, std::chrono::seconds patience = std::chrono::seconds(10))
{
    const QDeadlineTimer deadline(patience);
    QTimer wakeUp; // a condition need not come with an event
    wakeUp.start(5);
    QEventLoop loop;
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        loop.processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

} // namespace lumora::test
