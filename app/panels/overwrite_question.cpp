// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/overwrite_question.h"

#include "ui/controls/path_text.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace lumora {
namespace {

// As wide as the short title of the file, the box would break this sentence into a column of words.
void keepOnOneLine(const QMessageBox& question)
{
    auto* sentence = question.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
    if (!sentence) return;
    sentence->setMinimumWidth(sentence->fontMetrics().horizontalAdvance(sentence->text()));
}

} // namespace

bool confirmOverwrite(const std::filesystem::path& output, QWidget* parent, QAction& quit)
{
    QMessageBox question(parent && parent->isVisible() ? parent : nullptr);
    question.setWindowTitle(QStringLiteral("Lumora"));
    question.setIcon(QMessageBox::Warning);
    // A file name is no markup.
    question.setTextFormat(Qt::PlainText);
    question.setText(QStringLiteral("Replace %1?").arg(fileNameText(output)));
    question.setInformativeText(QStringLiteral("A file with this name already exists."));
    keepOnOneLine(question);
    QPushButton* replace = question.addButton(QStringLiteral("Replace"), QMessageBox::AcceptRole);
    QPushButton* skip = question.addButton(QStringLiteral("Skip"), QMessageBox::RejectRole);
    question.setDefaultButton(replace);
    question.setEscapeButton(skip);
    question.setWindowModality(Qt::ApplicationModal);
    question.addAction(&quit);
    question.exec();
    return question.clickedButton() == replace;
}

} // namespace lumora
