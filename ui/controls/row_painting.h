// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the rows of lists have in common on the windows' ground. The edges follow the window's direction, not
// that of the text.
#pragma once

#include <QRect>
#include <QString>
#include <QStyleOptionViewItem>

class QPainter;

namespace lumora {

enum class RowEdge { leading, trailing };

// Where the row is chosen, under the pointer, or has the keyboard's focus; and what divides it from the next.
void paintRowGround(QPainter& painter, const QStyleOptionViewItem& option, bool isLast);

// A line in the painter's font and pen, shortened where it has no room.
void paintRowText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& line,
                  const QString& text, Qt::TextElideMode mode, RowEdge edge = RowEdge::leading);
// The same with digits of one width.
void paintRowFigures(QPainter& painter, const QStyleOptionViewItem& option, const QRect& line,
                     const QString& text, RowEdge edge = RowEdge::leading);

} // namespace lumora
