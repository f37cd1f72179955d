// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// SIGINT, SIGTERM and SIGHUP as signals of the event loop. One object at a time, on the main thread; while it
// lives, these signals do not end the program.
#pragma once

#include <QObject>

namespace lumora::cli {

class InterruptWatcher : public QObject
{
    Q_OBJECT

public:
    explicit InterruptWatcher(QObject* parent = nullptr);
    ~InterruptWatcher() override;

Q_SIGNALS:
    void interrupted(int signalNumber);

private:
    void readPipe();

    int m_pipe[2];
};

} // namespace lumora::cli
