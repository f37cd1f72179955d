// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/closing_message.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"

namespace lumora {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

} // namespace

ClosingAnswer tellOfClosing(QWidget* window)
{
    MessageDialog message(QStringLiteral("Lumora keeps running without a window."),
                          QStringLiteral("Launch it again to bring the window back."), window);
    message.addDetail(QStringLiteral("The preferences can make closing quit instead."));
    message.addButton(copperStyle, QStringLiteral("Keep Running"));
    const StyledButton* quit = message.addButton(quietStyle, QStringLiteral("Quit"));
    message.ask();
    if (!message.clickedButton()) return ClosingAnswer::staysOpen;
    return message.clickedButton() == quit ? ClosingAnswer::quits : ClosingAnswer::keepsRunning;
}

} // namespace lumora
