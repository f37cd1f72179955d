// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/row_painting.h"

#include "ui/controls/figures.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>

namespace lumora {
namespace {

bool isAtRight(const QStyleOptionViewItem& option, RowEdge edge)
{
    return (edge == RowEdge::trailing) != (option.direction == Qt::RightToLeft);
}

} // namespace

void paintRowGround(QPainter& painter, const QStyleOptionViewItem& option, bool isLast)
{
    const auto cream = [](double opacity) {
        return TidewellTheme::withOpacity(TidewellTheme::cream(), opacity);
    };
    const QRect& row = option.rect;
    if (option.state.testFlag(QStyle::State_Selected))
        painter.fillRect(row, cream(0.1));
    else if (option.state.testFlag(QStyle::State_MouseOver))
        painter.fillRect(row, cream(0.05));
    if (!isLast) painter.fillRect(row.adjusted(0, row.height() - 1, 0, 0), cream(0.1));
    if (option.state.testFlag(QStyle::State_HasFocus))
        paintFocusRing(painter, row.adjusted(1, 1, -1, -2), 7, TidewellTheme::copperBright());
}

void paintRowText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& line,
                  const QString& text, Qt::TextElideMode mode, RowEdge edge)
{
    painter.setFont(fonts::shapedFor(text, painter.font()));
    const Qt::Alignment side = isAtRight(option, edge) ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(line,
                     static_cast<int>(side | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextDontClip |
                         Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(text, mode, line.width()));
}

void paintRowFigures(QPainter& painter, const QStyleOptionViewItem& option, const QRect& line,
                     const QString& text, RowEdge edge)
{
    const QFontMetricsF metrics(painter.font());
    const double width = figuresWidth(metrics, text);
    if (width > line.width()) return paintRowText(painter, option, line, text, Qt::ElideRight, edge);
    const double left = isAtRight(option, edge) ? line.right() + 1 - width : line.left();
    const double baseline = line.top() + (line.height() + metrics.ascent() - metrics.descent()) / 2;
    drawFigures(painter, {left, baseline}, text);
}

} // namespace lumora
