// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/reset_question.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"

namespace lumora {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

} // namespace

bool confirmStatsReset(QWidget* parent)
{
    MessageDialog question(QStringLiteral("Reset the lifetime statistics?"),
                           QStringLiteral("All figures go to zero. This cannot be undone."), parent);
    question.addButton(quietStyle, QStringLiteral("Cancel"));
    const StyledButton* reset = question.addButton(copperStyle, QStringLiteral("Reset"));
    question.ask();
    return question.clickedButton() == reset;
}

} // namespace lumora
