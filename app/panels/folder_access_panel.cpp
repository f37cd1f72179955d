// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/folder_access_panel.h"

#include "model/folder_access.h"
#include "ui/intake/files_and_folders_dialog.h"

#include <QFile>
#include <QFileDialog>

namespace lumora {

std::optional<std::filesystem::path> requestSaveAccess(const std::filesystem::path& folder, QWidget* parent)
{
    // The desktop's own panel: inside a sandbox only it can grant anything.
    QFileDialog panel(parent && parent->isVisible() ? parent : nullptr);
    panel.setWindowTitle(QString::fromStdString(saveAccessMessage(folder)));
    panel.setLabelText(QFileDialog::Accept, QStringLiteral("Allow Save Access"));
    panel.setFileMode(QFileDialog::Directory);
    panel.setOptions(QFileDialog::ShowDirsOnly | QFileDialog::ReadOnly);
    makeRoomy(panel);
    panel.setDirectory(QFile::decodeName(QByteArray::fromStdString(folder.native())));
    if (panel.exec() != QDialog::Accepted || panel.selectedFiles().isEmpty()) return std::nullopt;
    return QFile::encodeName(panel.selectedFiles().constFirst()).toStdString();
}

} // namespace lumora
