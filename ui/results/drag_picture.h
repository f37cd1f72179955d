// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What hangs on the pointer while a file is dragged out of the window: a small card with the file's name.
#pragma once

#include <QPixmap>
#include <QString>

namespace lumora {

// A long name loses its middle.
QPixmap dragPicture(const QString& fileName, double devicePixelRatio);

} // namespace lumora
