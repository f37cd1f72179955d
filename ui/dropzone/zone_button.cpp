// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/zone_button.h"

#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QKeyEvent>
#include <QPainter>

namespace lumora {
namespace {

constexpr int side = 24;
constexpr double armOfCross = 4;

} // namespace

ZoneButton::ZoneButton(Glyph glyph, QWidget* parent) : QAbstractButton(parent), m_glyph(glyph)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
}

QSize ZoneButton::sizeHint() const
{
    return {fonts::scaled(side), fonts::scaled(side)};
}

void ZoneButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

void ZoneButton::paintEvent(QPaintEvent*)
{
    using namespace TidewellTheme;
    QPainter painter(this);
    const QRectF circle = rect();
    paintCapsule(painter, circle,
                 withOpacity(cream(), isDown()       ? 0.2
                                      : underMouse() ? 0.15
                                                     : 0.08),
                 Qt::transparent);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(creamMuted(), 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const double arm = armOfCross * circle.width() / side;
    const QPointF centre = circle.center();
    if (m_glyph == Glyph::cross) {
        painter.drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
        painter.drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
    } else {
        const QPointF points[] = {centre + QPointF(-arm, -arm / 2), centre + QPointF(0, arm / 2),
                                  centre + QPointF(arm, -arm / 2)};
        painter.drawPolyline(points, 3);
    }
    if (hasFocus()) paintFocusRing(painter, circle, circle.width() / 2, copperBright());
}

} // namespace lumora
