// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/button_styles.h"

#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QLinearGradient>
#include <QPainter>

namespace lumora {
namespace {

constexpr double cornerRadius = 8;

} // namespace

QColor CopperButtonStyle::labelColour() const
{
    return TidewellTheme::cream();
}

QColor CopperButtonStyle::focusColour() const
{
    return TidewellTheme::cream();
}

void CopperButtonStyle::paintGround(QPainter& painter, const QRectF& area, ButtonState state) const
{
    using namespace TidewellTheme;
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0, withOpacity(copper(), state.pressed ? 0.72 : 1));
    gradient.setColorAt(1, withOpacity(copperStrong(), state.pressed ? 0.82 : 1));
    const bool lifted = state.hovered && !state.pressed;
    paintRounded(painter, area, cornerRadius, gradient, withOpacity(cream(), lifted ? 0.4 : 0.2));
}

QColor QuietButtonStyle::labelColour() const
{
    return TidewellTheme::ink();
}

QColor QuietButtonStyle::focusColour() const
{
    return TidewellTheme::copper();
}

void QuietButtonStyle::paintGround(QPainter& painter, const QRectF& area, ButtonState state) const
{
    using namespace TidewellTheme;
    const bool lifted = state.hovered && !state.pressed;
    paintRounded(painter, area, cornerRadius, withOpacity(lightCardRaised(), state.pressed ? 0.72 : 1),
                 lifted ? darkBorder() : border());
}

QColor DestructiveButtonStyle::labelColour() const
{
    return TidewellTheme::copperStrong();
}

void DestructiveButtonStyle::paintGround(QPainter& painter, const QRectF& area, ButtonState state) const
{
    using namespace TidewellTheme;
    const double depth = state.pressed ? 0.24 : state.hovered ? 0.16 : 0.08;
    paintRounded(painter, area, cornerRadius, withOpacity(copperStrong(), depth), darkBorder());
}

} // namespace lumora
