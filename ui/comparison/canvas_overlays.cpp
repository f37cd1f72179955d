// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/canvas_overlays.h"

#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <cmath>

namespace lumora::overlays {
namespace {

using fonts::TextStyle;
using TidewellTheme::withOpacity;

constexpr int margin = 10;

// Pictures have any colour, so what lies on them brings its own ground.
QColor ground()
{
    return withOpacity(TidewellTheme::leatherDeep(), 0.86);
}

void paintArrow(QPainter& painter, QPointF tip, double way)
{
    QPainterPath arrow(tip);
    arrow.lineTo(tip + QPointF(-way, -std::abs(way)));
    arrow.moveTo(tip);
    arrow.lineTo(tip + QPointF(-way, std::abs(way)));
    painter.drawPath(arrow);
}

} // namespace

QBrush checkerboard()
{
    constexpr int cell = 8;
    static const QBrush brush = [] {
        QImage tile(2 * cell, 2 * cell, QImage::Format_RGB32);
        tile.fill(TidewellTheme::leather());
        QPainter painter(&tile);
        painter.fillRect(0, 0, cell, cell, TidewellTheme::leatherRaised());
        painter.fillRect(cell, cell, cell, cell, TidewellTheme::leatherRaised());
        painter.end();
        return QBrush(tile);
    }();
    return brush;
}

void paintLine(QPainter& painter, const QRect& view, double x, bool focused)
{
    constexpr double radius = 14;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(x - 2, view.top(), 4, view.height()), ground());
    painter.fillRect(QRectF(x - 1, view.top(), 2, view.height()), TidewellTheme::cream());
    const QPointF centre(x, QRectF(view).center().y());
    painter.setPen(QPen(focused ? TidewellTheme::copperBright() : TidewellTheme::cream(), 2));
    painter.setBrush(TidewellTheme::leather());
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(QPen(TidewellTheme::cream(), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    for (const double way : {-4.0, 4.0})
        paintArrow(painter, centre + QPointF(2 * way, 0), way);
    painter.restore();
}

void paintLabel(QPainter& painter, const QRect& side, Corner corner, const QString& text)
{
    painter.save();
    painter.setFont(fonts::systemFont(11, QFont::DemiBold));
    const int height = fonts::scaled(22);
    const QSize size(painter.fontMetrics().horizontalAdvance(text) + height, height);
    if (size.width() + 2 * margin <= side.width()) {
        const int left =
            corner == Corner::left ? side.left() + margin : side.right() + 1 - margin - size.width();
        const QRect area(QPoint(left, side.top() + margin), size);
        paintCapsule(painter, area, ground(), withOpacity(TidewellTheme::cream(), 0.2));
        painter.setPen(TidewellTheme::cream());
        painter.drawText(area, Qt::AlignCenter | Qt::TextSingleLine, text);
    }
    painter.restore();
}

void paintNotice(QPainter& painter, const QRect& view, const QString& text, bool centred)
{
    constexpr int padding = 12;
    constexpr auto flags = static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap;
    painter.save();
    painter.setFont(fonts::font(TextStyle::body));
    const QRect room =
        view.adjusted(margin + padding, margin + padding, -margin - padding, -margin - padding);
    const QSize size = painter.fontMetrics().boundingRect(room, flags, text).size();
    const auto place = centred ? Qt::AlignCenter : Qt::AlignHCenter | Qt::AlignBottom;
    const QRect words = QStyle::alignedRect(Qt::LeftToRight, place, size, room);
    paintRounded(painter, words.adjusted(-padding, -padding + 2, padding, padding - 2), 8, ground(),
                 withOpacity(TidewellTheme::cream(), 0.2));
    painter.setPen(TidewellTheme::cream());
    painter.drawText(words, flags, text);
    painter.restore();
}

void paintProgress(QPainter& painter, const QRect& view, double part, Qt::LayoutDirection direction)
{
    constexpr int height = 3;
    const QRect line(view.left(), view.bottom() + 1 - height, view.width(), height);
    painter.fillRect(line, ground());
    const QRect done(line.left(), line.top(), static_cast<int>(std::lround(line.width() * part)), height);
    painter.fillRect(QStyle::visualRect(direction, line, done), TidewellTheme::copperBright());
}

} // namespace lumora::overlays
