// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/overwrite_question.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/path_text.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"

#include <QCheckBox>

namespace lumora {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

// A dialog of a hidden window would be hidden with it.
QWidget* shownParent(QWidget* parent)
{
    return parent && parent->isVisible() && !parent->isMinimized() ? parent : nullptr;
}

} // namespace

OverwriteAnswer askToOverwrite(const std::filesystem::path& output, QWidget* parent, QAction& quit)
{
    MessageDialog question(QStringLiteral("Replace %1?").arg(fileNameText(output)),
                           QStringLiteral("A file with this name already exists."), shownParent(parent));
    question.addDetail(QStringLiteral("In %1").arg(pathText(output.parent_path())));
    const StyledButton* replace = question.addButton(copperStyle, QStringLiteral("Replace"));
    question.addButton(quietStyle, QStringLiteral("Skip"));
    const StyledButton* cancel = question.addLeadingButton(quietStyle, QStringLiteral("Cancel Batch"));
    auto* forRemaining = new QCheckBox(QStringLiteral("Do the same for the remaining files"), &question);
    question.addControl(forRemaining);
    question.addAction(&quit);
    question.ask();

    using Choice = OverwriteAnswer::Choice;
    const StyledButton* clicked = question.clickedButton();
    if (!clicked) return {};
    if (clicked == cancel) return {Choice::cancelBatch, true};
    return {clicked == replace ? Choice::replace : Choice::skip, forRemaining->isChecked()};
}

} // namespace lumora
