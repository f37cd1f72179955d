// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The looks of the views' buttons. A style has no state: it is given the label's state and paints the ground
// under it.
#pragma once

#include <QColor>
#include <QMargins>

class QPainter;
class QRectF;

namespace lumora {

struct ButtonState
{
    bool pressed = false;
    bool hovered = false;
};

class ButtonStyle
{
public:
    virtual ~ButtonStyle() = default;

    virtual QMargins padding() const = 0; // between the label and the edge, in logical pixels
    virtual QColor labelColour() const = 0;
    virtual QColor focusColour() const = 0;
    virtual void paintGround(QPainter& painter, const QRectF& area, ButtonState state) const = 0;
};

// The prominent style.
class CopperButtonStyle : public ButtonStyle
{
public:
    QMargins padding() const override { return {12, 8, 12, 8}; }
    QColor labelColour() const override;
    QColor focusColour() const override;
    void paintGround(QPainter& painter, const QRectF& area, ButtonState state) const override;
};

// The secondary style.
class QuietButtonStyle : public ButtonStyle
{
public:
    QMargins padding() const override { return {10, 7, 10, 7}; }
    QColor labelColour() const override;
    QColor focusColour() const override;
    void paintGround(QPainter& painter, const QRectF& area, ButtonState state) const override;
};

// A bordered button whose action cannot be undone.
class DestructiveButtonStyle : public QuietButtonStyle
{
public:
    QColor labelColour() const override;
    void paintGround(QPainter& painter, const QRectF& area, ButtonState state) const override;
};

} // namespace lumora
