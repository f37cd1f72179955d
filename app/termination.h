// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The one way to end the program. The event loop may still deliver what has arrived when it is told to end;
// who must not take it any more listens here. Main thread.
#pragma once

#include <QObject>

namespace lumora {

class Termination : public QObject
{
    Q_OBJECT

public:
    static Termination& shared();

    // Emits begun(), then ends the event loop.
    void begin();

Q_SIGNALS:
    void begun();
};

} // namespace lumora
