// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the drop zone looks like at one moment: a dashed field, an icon, the status and a fixed hint, and
// while a batch runs a thin line of its progress.
#pragma once

#include "ui/theme/fonts.h"

#include <QRect>
#include <QString>

#include <optional>

class QPainter;

namespace lumora {

struct DropZonePicture
{
    QRect area;
    Qt::LayoutDirection direction = Qt::LeftToRight;
    QString iconName;
    double iconTurn = 0; // degrees, clockwise
    QString status;
    QString secondLine = hint();
    std::optional<double> progress; // the done part, 0 to 1
    QString timeLeft;               // at the end of the line of progress, where there is room
    bool targeted = false;
    bool hovered = false;
    bool pressed = false;
    bool focused = false;

    // The least height that holds icon, status and hint. A lower zone leaves out the icon, then the hint.
    static int leastHeight();
    static QString hint();

    void paint(QPainter& painter) const;

private:
    void paintField(QPainter& painter) const;
    void drawField(QPainter& painter) const;
    void paintProgress(QPainter& painter) const;
    void paintTimeLeft(QPainter& painter) const;
    void paintContent(QPainter& painter) const;
    void paintLine(QPainter& painter, int top, fonts::TextStyle style, const QString& text) const;
    void paintIcon(QPainter& painter, const QRectF& place) const;
};

} // namespace lumora
