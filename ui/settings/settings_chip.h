// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the drop window's settings have in common: a chip that may switch something on and off.
#pragma once

#include "ui/controls/chip_button.h"

namespace lumora {

class SettingsChip : public ChipButton
{
    Q_OBJECT

public:
    using ChipButton::ChipButton;

    // Of a chip that switches `what` on and off: its spoken name tells which, behind the text that it shows.
    void displayState(const QString& what, bool on);
};

} // namespace lumora
