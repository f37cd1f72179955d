// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The small cross that cancels a running batch.
#pragma once

#include "ui/dropzone/zone_button.h"

namespace lumora {

class CancelButton : public ZoneButton
{
    Q_OBJECT

public:
    explicit CancelButton(QWidget* parent = nullptr);

    // The next press ends the files in work as well.
    void setEndsAtOnce(bool atOnce);
};

} // namespace lumora
