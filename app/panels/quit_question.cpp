// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/quit_question.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"

namespace lumora {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

} // namespace

bool confirmQuit(QWidget* parent)
{
    MessageDialog question(
        QStringLiteral("Quit Lumora?"),
        QStringLiteral("Images are being optimized, and nothing could bring this window back."), parent);
    const StyledButton* quit = question.addButton(copperStyle, QStringLiteral("Quit"));
    question.addButton(quietStyle, QStringLiteral("Keep Open"));
    question.ask();
    return question.clickedButton() == quit;
}

} // namespace lumora
