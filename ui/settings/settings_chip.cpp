// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_chip.h"

namespace lumora {

void SettingsChip::displayState(const QString& what, bool on)
{
    setCheckable(true);
    setChecked(on);
    setAccessibleName(text() + QStringLiteral(", ") + what +
                      (on ? QStringLiteral(" on") : QStringLiteral(" off")));
}

} // namespace lumora
