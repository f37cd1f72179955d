// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/cancel_button.h"

namespace lumora {

CancelButton::CancelButton(QWidget* parent) : ZoneButton(Glyph::cross, parent)
{
    setAccessibleName(QStringLiteral("Cancel"));
    setEndsAtOnce(false);
}

void CancelButton::setEndsAtOnce(bool atOnce)
{
    setToolTip(atOnce ? QStringLiteral("Cancel now") : QStringLiteral("Cancel"));
    setAccessibleDescription(atOnce ? QStringLiteral("Ends the files in work as well")
                                    : QStringLiteral("Ends the batch after the files in work"));
}

} // namespace lumora
