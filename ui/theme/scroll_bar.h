// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The style's scroll bar: a thumb on nothing, without buttons.
#pragma once

#include <QStyle>

class QPainter;
class QStyleOptionSlider;

namespace lumora::controls {

constexpr int shortestScrollThumb = 36;

// Empty for the buttons that it has not.
QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part);
void paintScrollBar(QPainter& painter, const QStyleOptionSlider& bar);

} // namespace lumora::controls
