// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/step_button.h"

#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>

namespace lumora {

StepButton::StepButton(int direction, QWidget* parent) : QAbstractButton(parent), m_direction(direction)
{
    setAutoRepeat(true);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize StepButton::sizeHint() const
{
    return {fonts::scaled(18), fonts::scaled(12)};
}

void StepButton::paintEvent(QPaintEvent*)
{
    using namespace TidewellTheme;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!isEnabled()) painter.setOpacity(0.35);
    const QColor ground = isDown() ? lightCard() : lightCardRaised();
    paintRounded(painter, rect(), 4, ground,
                 withOpacity(copperStrong(), underMouse() && isEnabled() ? 0.6 : 0.38));
    const QPointF centre = QRectF(rect()).center();
    const QPointF points[] = {centre + QPointF(-3, 1.5 * m_direction), centre - QPointF(0, 1.5 * m_direction),
                              centre + QPointF(3, 1.5 * m_direction)};
    painter.setPen(QPen(copperStrong(), 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points, 3);
}

} // namespace lumora
