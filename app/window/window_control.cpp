// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/window_control.h"

#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>

namespace lumora {
namespace {

constexpr QSize controlSize(28, 26);
constexpr double radius = 6;
constexpr double glyphSide = 10;

void paintGlyph(QPainter& painter, WindowControl::Glyph glyph, const QRectF& area)
{
    switch (glyph) {
    case WindowControl::Glyph::menu:
        for (const double y : {area.top() + 1, area.center().y(), area.bottom() - 1})
            painter.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        break;
    case WindowControl::Glyph::minimize:
        painter.drawLine(QPointF(area.left(), area.center().y()), QPointF(area.right(), area.center().y()));
        break;
    case WindowControl::Glyph::zoom:
        painter.drawRoundedRect(area.adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        break;
    case WindowControl::Glyph::close:
        painter.drawLine(area.topLeft(), area.bottomRight());
        painter.drawLine(area.topRight(), area.bottomLeft());
        break;
    }
}

} // namespace

WindowControl::WindowControl(Glyph glyph, const QString& name, QWidget* parent)
    : QAbstractButton(parent), m_glyph(glyph)
{
    setFocusPolicy(Qt::TabFocus);
    setToolTip(name);
    setAccessibleName(name);
    resize(controlSize);
}

QSize WindowControl::sizeHint() const
{
    return controlSize;
}

void WindowControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isDown() || underMouse()) {
        const QColor ground = TidewellTheme::withOpacity(TidewellTheme::cream(), isDown() ? 0.2 : 0.1);
        paintRounded(painter, rect(), radius, ground, Qt::transparent);
    }
    if (hasFocus()) paintFocusRing(painter, rect(), radius, TidewellTheme::copperBright());
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(TidewellTheme::creamMuted(), 1.4, Qt::SolidLine, Qt::RoundCap));
    QRectF area(0, 0, glyphSide, glyphSide);
    area.moveCenter(QRectF(rect()).center());
    paintGlyph(painter, m_glyph, area);
}

void WindowControl::enterEvent(QEnterEvent* event)
{
    QAbstractButton::enterEvent(event);
    update();
}

void WindowControl::leaveEvent(QEvent* event)
{
    QAbstractButton::leaveEvent(event);
    update();
}

} // namespace lumora
