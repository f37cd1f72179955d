// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The orders of the system and of the user's terminal to end the program (SIGINT, SIGTERM, SIGHUP), as
// signals of the event loop. One object at a time, on the main thread; while it lives, they do not end the
// program by themselves.
#pragma once

#include <QObject>

#include <csignal>
#include <vector>

namespace lumora {

class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject* parent = nullptr);
    // What the signals did before, they do again.
    ~TerminationSignals() override;

Q_SIGNALS:
    void received(int signalNumber);

private:
    struct Former
    {
        int signalNumber;
        struct sigaction action;
    };

    void watch(int signalNumber);
    void readPipe();

    int m_pipe[2] = {-1, -1};
    std::vector<Former> m_former;
};

} // namespace lumora
