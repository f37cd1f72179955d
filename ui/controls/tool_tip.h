// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>

namespace lumora {

// A tooltip of these lines, as they are: markup in a name or message shows as itself, and a path is not
// wrapped at its blanks. Empty lines are left out.
QString toolTipOf(QStringList lines);

} // namespace lumora
