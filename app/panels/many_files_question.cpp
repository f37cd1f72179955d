// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/many_files_question.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"

#include <QLocale>
#include <QWidget>

namespace lumora {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

} // namespace

bool confirmManyFiles(std::size_t files, std::size_t folders, QWidget* parent)
{
    const QLocale locale;
    const QString place = folders == 1
                              ? QStringLiteral("They lie in one folder.")
                              : QStringLiteral("They lie in %1 folders.").arg(locale.toString(folders));
    MessageDialog question(QStringLiteral("Optimize %1 images?").arg(locale.toString(files)),
                           place + QStringLiteral(" Nothing has been written yet."),
                           parent && parent->isVisible() && !parent->isMinimized() ? parent : nullptr);
    const StyledButton* optimize = question.addButton(copperStyle, QStringLiteral("Optimize"));
    question.addButton(quietStyle, QStringLiteral("Cancel"));
    question.ask();
    return question.clickedButton() == optimize;
}

} // namespace lumora
