// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/path_text.h"

namespace lumora {

QString pathText(const std::filesystem::path& path)
{
    QString text = QString::fromStdString(path.native());
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control) character = QChar::ReplacementCharacter;
    }
    return text;
}

QString fileNameText(const std::filesystem::path& path)
{
    return pathText(path.has_filename() ? path.filename() : path.parent_path().filename());
}

} // namespace lumora
