// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What lies over the pictures of a comparison, and under them. Rectangles are in the painter's logical
// pixels.
#pragma once

#include <QString>

class QBrush;
class QPainter;
class QRect;

namespace lumora::overlays {

// The ground under transparent pixels.
QBrush checkerboard();

// The line that divides the pictures, with its handle, at `x`.
void paintLine(QPainter& painter, const QRect& view, double x, bool focused);

// What one side shows, in its upper corner; left out where the side is too narrow for it.
enum class Corner { left, right };
void paintLabel(QPainter& painter, const QRect& side, Corner corner, const QString& text);

// A sentence at the lower edge of the view, in the middle where `centred`.
void paintNotice(QPainter& painter, const QRect& view, const QString& text, bool centred);

// How far what is to come has come, along the lower edge.
void paintProgress(QPainter& painter, const QRect& view, double part, Qt::LayoutDirection direction);

} // namespace lumora::overlays
