// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Text whose digits all take the width of the widest one, so that figures line up and do not jitter as they
// change. Many desktop fonts have proportional digits, and this Qt cannot ask for the font's tabular ones.
#pragma once

#include <QFontMetricsF>
#include <QPointF>
#include <QString>

class QPainter;

namespace lumora {

double figuresWidth(const QFontMetricsF& metrics, const QString& text);
// Draws from `baseline` to the right in the painter's font and pen.
void drawFigures(QPainter& painter, QPointF baseline, const QString& text);

} // namespace lumora
