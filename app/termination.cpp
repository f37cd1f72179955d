// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/termination.h"

#include <QCoreApplication>

namespace lumora {

Termination& Termination::shared()
{
    static Termination termination;
    return termination;
}

void Termination::begin()
{
    Q_EMIT begun();
    QCoreApplication::exit();
}

} // namespace lumora
