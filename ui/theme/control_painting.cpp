// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/control_painting.h"

#include "ui/theme/button_styles.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>
#include <QStyleOption>

namespace lumora::controls {
namespace {

using namespace TidewellTheme;

constexpr double fieldRadius = 6;

bool has(const QStyleOption& option, QStyle::StateFlag flag)
{
    return option.state.testFlag(flag);
}

double presence(const QStyleOption& option)
{
    return has(option, QStyle::State_Enabled) ? 1 : 0.45;
}

QColor groundColour(const QStyleOption& option)
{
    return option.palette.color(QPalette::Base);
}

QColor outlineColour(const QStyleOption& option)
{
    const bool lifted = has(option, QStyle::State_Enabled) && has(option, QStyle::State_MouseOver);
    const bool onDark = groundColour(option).lightnessF() < 0.5F;
    return withOpacity(onDark ? copperBright() : copperStrong(), lifted ? 0.6 : 0.38);
}

void paintGround(QPainter& painter, const QStyleOption& option)
{
    paintRounded(painter, option.rect, fieldRadius, groundColour(option), outlineColour(option));
    if (has(option, QStyle::State_HasFocus)) paintFocus(painter, option, fieldRadius);
}

void paintChevrons(QPainter& painter, QPointF centre, const QColor& colour)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const double way : {-1.0, 1.0}) {
        const QPointF tip = centre + QPointF(0, way * 5.5);
        const QPointF points[] = {tip + QPointF(-3, -way * 3), tip, tip + QPointF(3, -way * 3)};
        painter.drawPolyline(points, 3);
    }
}

} // namespace

void paintFocus(QPainter& painter, const QStyleOption& option, double radius)
{
    const bool onDark = option.palette.color(QPalette::WindowText).lightnessF() > 0.5F;
    paintFocusRing(painter, option.rect, radius, onDark ? copperBright() : copper());
}

void paintTick(QPainter& painter, QPointF centre, double side, const QColor& colour)
{
    const double unit = side / 16;
    const QPointF points[] = {centre + QPointF(-4, 0.4) * unit, centre + QPointF(-1.2, 3.2) * unit,
                              centre + QPointF(4, -3.2) * unit};
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, 2 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points, 3);
    painter.restore();
}

void paintField(QPainter& painter, const QStyleOption& option)
{
    painter.save();
    painter.setOpacity(presence(option));
    paintGround(painter, option);
    painter.restore();
}

void paintButton(QPainter& painter, const QStyleOptionButton& option)
{
    painter.save();
    painter.setOpacity(presence(option));
    QuietButtonStyle().paintGround(painter, option.rect,
                                   {has(option, QStyle::State_Sunken), has(option, QStyle::State_MouseOver)});
    painter.restore();
}

void paintToolButton(QPainter& painter, const QStyleOption& option)
{
    const bool lifted = has(option, QStyle::State_Enabled) && has(option, QStyle::State_MouseOver);
    const bool pressed = has(option, QStyle::State_On) || has(option, QStyle::State_Sunken);
    const double depth = pressed ? 0.24 : lifted ? 0.12 : 0;
    paintRounded(painter, option.rect, fieldRadius, withOpacity(cream(), depth), Qt::transparent);
    if (has(option, QStyle::State_HasFocus)) paintFocus(painter, option, fieldRadius);
}

void paintCheckBox(QPainter& painter, const QStyleOption& option)
{
    painter.save();
    painter.setOpacity(presence(option));
    const bool on = has(option, QStyle::State_On);
    const QColor fill =
        on ? (has(option, QStyle::State_Sunken) ? copperStrong() : copper()) : lightCardRaised();
    paintRounded(painter, option.rect, 4.5, fill, on ? copperStrong() : copper());
    if (on) paintTick(painter, QRectF(option.rect).center(), option.rect.height(), cream());
    painter.restore();
}

void paintPicker(QPainter& painter, const QStyleOptionComboBox& option)
{
    painter.save();
    painter.setOpacity(presence(option));
    paintGround(painter, option);
    const bool mirrored = option.direction == Qt::RightToLeft;
    const double x = mirrored ? option.rect.left() + 13.5 : option.rect.right() + 1 - 13.5;
    paintChevrons(painter, {x, QRectF(option.rect).center().y()}, copperStrong());
    painter.restore();
}

void paintSlider(QPainter& painter, const QStyleOptionSlider& option, const QRect& handle)
{
    painter.save();
    painter.setOpacity(presence(option));
    const double y = QRectF(option.rect).center().y();
    const QRectF groove(option.rect.left() + 2, y - 2, option.rect.width() - 4, 4);
    paintRounded(painter, groove, 2, withOpacity(copperStrong(), 0.22), Qt::transparent);
    QRectF filled = groove;
    if (option.upsideDown) {
        filled.setLeft(QRectF(handle).center().x());
    } else {
        filled.setRight(QRectF(handle).center().x());
    }
    paintRounded(painter, filled, 2, copper(), Qt::transparent);
    const bool focused = has(option, QStyle::State_HasFocus);
    const QRectF knob(QRectF(handle).center().x() - 8, y - 8, 16, 16);
    paintRounded(painter, knob, 8, lightCardRaised(), focused ? copper() : outlineColour(option),
                 focused ? 3 : 1.5);
    painter.restore();
}

} // namespace lumora::controls
