// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures by symbol name. Each is one monochrome SVG of a 24-unit grid, tinted when it is drawn: its strokes
// get their weight from the font weight beside which it stands, and drawn shapes are kept per name, size,
// weight, colour and device pixel ratio. A name without a picture draws nothing. Main thread only.
#pragma once

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QPixmap>
#include <QString>

class QPainter;

namespace lumora {

struct Symbol
{
    QString name;
    double size; // of the font beside which it stands, in logical pixels at the default text scale
    QFont::Weight weight = QFont::Normal;
    bool hierarchical = false; // shades the second layer of the picture

    // The side of the square that the symbol takes, in logical pixels at the present text scale.
    int extent() const;
    QPixmap pixmap(const QColor& colour, double devicePixelRatio) const;
    // Centred in `area`.
    void paint(QPainter& painter, const QRectF& area, const QColor& colour) const;
    // For menus and window-system uses that want an icon.
    QIcon icon(const QColor& colour) const;
};

} // namespace lumora
