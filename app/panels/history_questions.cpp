// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/history_questions.h"

#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"

#include <QDateTime>
#include <QLocale>

namespace lumora {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

QString images(std::int64_t count)
{
    const QString number = QLocale().toString(static_cast<qlonglong>(count));
    return count == 1 ? QStringLiteral("1 image") : QStringLiteral("%1 images").arg(number);
}

void tell(const QString& text, const QString& explanation, QWidget* parent)
{
    MessageDialog message(text, explanation, parent);
    message.addButton(copperStyle, QStringLiteral("OK"));
    message.ask();
}

bool ask(const QString& text, std::int64_t left, const QString& detail, QWidget* parent)
{
    MessageDialog question(
        text,
        (left == 1 ? QStringLiteral("The output of %1 goes to the Trash. Its original and what it "
                                    "replaced come back if they went there.")
                   : QStringLiteral("The outputs of %1 go to the Trash. Originals and replaced "
                                    "files come back if they went there."))
            .arg(images(left)),
        parent);
    if (!detail.isEmpty()) question.addDetail(detail);
    const StyledButton* undo = question.addButton(copperStyle, QStringLiteral("Undo"));
    question.addButton(quietStyle, QStringLiteral("Cancel"));
    question.ask();
    return question.clickedButton() == undo;
}

} // namespace

bool confirmUndo(const BatchSummary& batch, WhichBatch which, QWidget* parent)
{
    const QString time =
        QLocale().toString(QDateTime::fromSecsSinceEpoch(batch.batch.time), QLocale::ShortFormat);
    return ask(which == WhichBatch::last ? QStringLiteral("Undo the last batch?")
                                         : QStringLiteral("Undo this batch?"),
               batch.written - batch.undone,
               time + QStringLiteral(": ") + QString::fromStdString(batch.batch.settings), parent);
}

bool confirmUndo(std::size_t files, QWidget* parent)
{
    const auto count = static_cast<std::int64_t>(files);
    return ask(QStringLiteral("Undo %1?").arg(images(count)), count, {}, parent);
}

void tellNothingToUndo(QWidget* parent)
{
    tell(QStringLiteral("There is nothing to undo."),
         QStringLiteral("No output is remembered that was not taken back."), parent);
}

bool confirmForgetting(QWidget* parent)
{
    MessageDialog question(
        QStringLiteral("Forget all batches?"),
        QStringLiteral("Pictures stay as they are, but no batch so far can be looked up or "
                       "undone any more."),
        parent);
    question.addButton(quietStyle, QStringLiteral("Cancel"));
    const StyledButton* forget = question.addButton(copperStyle, QStringLiteral("Forget"));
    question.ask();
    return question.clickedButton() == forget;
}

void tellHistoryUnusable(QWidget* parent)
{
    tell(QStringLiteral("The history cannot be used."),
         QStringLiteral("It may be in use by another program, or its folder may be full or not writable."),
         parent);
}

} // namespace lumora
