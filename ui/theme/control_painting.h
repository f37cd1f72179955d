// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How the style paints its controls. `option` is always the one of the control that the function names.
#pragma once

#include <QPointF>
#include <QSize>

class QColor;
class QPainter;
class QRect;
class QStyleOption;
class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionMenuItem;
class QStyleOptionSlider;

namespace lumora::controls {

void paintField(QPainter& painter, const QStyleOption& option);
// A stock button, as the file panels have them, in the quiet look.
void paintButton(QPainter& painter, const QStyleOptionButton& option);
// A tool above the list of a file panel, on the window's ground.
void paintToolButton(QPainter& painter, const QStyleOption& option);
void paintCheckBox(QPainter& painter, const QStyleOption& option);
void paintPicker(QPainter& painter, const QStyleOptionComboBox& option);
void paintSlider(QPainter& painter, const QStyleOptionSlider& option, const QRect& handle);
void paintMenuItem(QPainter& painter, const QStyleOptionMenuItem& option);
QSize menuItemSize(const QStyleOptionMenuItem& option);
void paintMenuPanel(QPainter& painter, const QRect& area);
// The focus ring around something that lies on the option's palette.
void paintFocus(QPainter& painter, const QStyleOption& option, double radius);

// The tick of checked items, in a square around `centre`.
void paintTick(QPainter& painter, QPointF centre, double side, const QColor& colour);

} // namespace lumora::controls
