// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/surfaces.h"

#include "ui/theme/tidewell_theme.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace lumora {

QBrush windowGradient(const QRectF& area, Qt::LayoutDirection direction)
{
    const bool mirrored = direction == Qt::RightToLeft;
    QLinearGradient gradient(mirrored ? area.topRight() : area.topLeft(),
                             mirrored ? area.bottomLeft() : area.bottomRight());
    gradient.setColorAt(0, TidewellTheme::bg());
    gradient.setColorAt(0.5, TidewellTheme::bgWarm());
    gradient.setColorAt(1, TidewellTheme::bg());
    return gradient;
}

void paintRounded(QPainter& painter, const QRectF& area, double radius, const QBrush& fill,
                  const QColor& outline, double outlineWidth)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double r = std::min({radius, area.width() / 2, area.height() / 2});
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(area, r, r);
    const double half = outlineWidth / 2;
    painter.setPen(QPen(outline, outlineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(area.adjusted(half, half, -half, -half), r - half, r - half);
    painter.restore();
}

void paintCapsule(QPainter& painter, const QRectF& area, const QBrush& fill, const QColor& outline)
{
    paintRounded(painter, area, area.height() / 2, fill, outline);
}

void paintFocusRing(QPainter& painter, const QRectF& area, double radius, const QColor& colour)
{
    paintRounded(painter, area, radius, Qt::NoBrush, colour, 2);
}

} // namespace lumora
