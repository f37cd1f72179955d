// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/overwrite_question.h"

#include "ui/path_text.h"

#include <QMessageBox>
#include <QPushButton>

namespace lumora {

bool confirmOverwrite(const std::filesystem::path& output, QWidget* parent, QAction& quit)
{
    QMessageBox question(parent && parent->isVisible() ? parent : nullptr);
    question.setWindowTitle(QStringLiteral("Lumora"));
    question.setIcon(QMessageBox::Warning);
    // A file name is no markup.
    question.setTextFormat(Qt::PlainText);
    question.setText(QStringLiteral("Replace %1?").arg(fileNameText(output)));
    question.setInformativeText(QStringLiteral("A file with this name already exists."));
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
