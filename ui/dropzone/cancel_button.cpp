// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/cancel_button.h"

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

CancelButton::CancelButton(QWidget* parent) : QAbstractButton(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    setAccessibleName(QStringLiteral("Cancel"));
    setEndsAtOnce(false);
}

void CancelButton::setEndsAtOnce(bool atOnce)
{
    setToolTip(atOnce ? QStringLiteral("Cancel now") : QStringLiteral("Cancel"));
    setAccessibleDescription(atOnce ? QStringLiteral("Ends the files in work as well")
                                    : QStringLiteral("Ends the batch after the files in work"));
}

QSize CancelButton::sizeHint() const
{
    return {fonts::scaled(side), fonts::scaled(side)};
}

void CancelButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

void CancelButton::paintEvent(QPaintEvent*)
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
    painter.setPen(QPen(creamMuted(), 1.6, Qt::SolidLine, Qt::RoundCap));
    const double arm = armOfCross * circle.width() / side;
    const QPointF centre = circle.center();
    painter.drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
    painter.drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
    if (hasFocus()) paintFocusRing(painter, circle, circle.width() / 2, copperBright());
}

} // namespace lumora
