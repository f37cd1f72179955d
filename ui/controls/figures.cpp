// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/figures.h"

#include <QPainter>

#include <algorithm>
#include <functional>

namespace lumora {
namespace {

double digitCell(const QFontMetricsF& metrics)
{
    double width = 0;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit)
        width = std::max(width, metrics.horizontalAdvance(QChar(digit)));
    return width;
}

// Calls `piece(text, offset)` for every digit and every run between digits; returns the whole width.
double forEachPiece(const QFontMetricsF& metrics, const QString& text,
                    const std::function<void(const QString&, double)>& piece)
{
    const double cell = digitCell(metrics);
    double x = 0;
    for (qsizetype begin = 0, end = 0; begin < text.size(); begin = end) {
        const bool digit = text[begin] >= u'0' && text[begin] <= u'9';
        end = begin + 1;
        while (!digit && end < text.size() && (text[end] < u'0' || text[end] > u'9'))
            ++end;
        const QString part = text.mid(begin, end - begin);
        const double advance = metrics.horizontalAdvance(part);
        piece(part, digit ? x + (cell - advance) / 2 : x);
        x += digit ? cell : advance;
    }
    return x;
}

} // namespace

double figuresWidth(const QFontMetricsF& metrics, const QString& text)
{
    return forEachPiece(metrics, text, [](const QString&, double) {});
}

void drawFigures(QPainter& painter, QPointF baseline, const QString& text)
{
    forEachPiece(QFontMetricsF(painter.font()), text, [&](const QString& part, double x) {
        painter.drawText(QPointF(baseline.x() + x, baseline.y()), part);
    });
}

} // namespace lumora
