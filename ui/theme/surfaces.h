// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The painted grounds that the views share. Rectangles are in the painter's logical pixels.
#pragma once

#include <QBrush>
#include <QColor>
#include <QRectF>

class QPainter;

namespace lumora {

// The ground of both windows: bg, bgWarm, bg from the top-leading corner to the bottom-trailing one.
QBrush windowGradient(const QRectF& area, Qt::LayoutDirection direction);

// A rounded rectangle with its outline drawn inside `area`. A radius of half the height makes a capsule.
void paintRounded(QPainter& painter, const QRectF& area, double radius, const QBrush& fill,
                  const QColor& outline, double outlineWidth = 1);
void paintCapsule(QPainter& painter, const QRectF& area, const QBrush& fill, const QColor& outline);

// The mark of keyboard focus, the same on every control: two pixels inside the edge of `area`.
void paintFocusRing(QPainter& painter, const QRectF& area, double radius, const QColor& colour);

} // namespace lumora
