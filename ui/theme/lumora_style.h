// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The application's widget style: every stock control (pickers, menus, sliders, toggles, fields, scroll bars,
// tooltips) in the theme's colours, with one mark of keyboard focus. What it does not draw is left to Qt's
// own Fusion style with the theme's palette. QApplication owns the style.
#pragma once

#include <QProxyStyle>

namespace lumora {

class LumoraStyle : public QProxyStyle
{
    Q_OBJECT

public:
    LumoraStyle();

    QPalette standardPalette() const override;

    void polish(QWidget* widget) override;
    // The desktop's own colours would be unreadable on the theme's grounds.
    void polish(QPalette& palette) override;
    using QProxyStyle::polish;

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    QIcon standardIcon(StandardPixmap kind, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option,
                         const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
};

} // namespace lumora
