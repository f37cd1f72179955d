// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The orders of the system to end the program (SIGTERM, SIGINT, SIGHUP), as an ordinary end of the event
// loop: names are given up, encoders stopped and temporary files removed. One object a program; main thread.
#pragma once

#include <QObject>

namespace lumora {

class TerminateSignals : public QObject
{
public:
    explicit TerminateSignals(QObject* parent = nullptr);
    ~TerminateSignals() override;

private:
    int m_descriptor;
};

} // namespace lumora
