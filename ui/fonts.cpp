// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/fonts.h"

#include <QApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace lumora::fonts {
namespace {

constexpr double bodySize = 13;

double designSize(TextStyle style)
{
    switch (style) {
    case TextStyle::title2:
        return 17;
    case TextStyle::headline:
        return 13;
    case TextStyle::subheadline:
        return 11;
    case TextStyle::body:
        return bodySize;
    case TextStyle::caption:
        return 10;
    case TextStyle::caption2:
        return 10;
    }
    return bodySize;
}

double designLineHeight(TextStyle style)
{
    switch (style) {
    case TextStyle::title2:
        return 21;
    case TextStyle::headline:
        return 16;
    case TextStyle::subheadline:
        return 14;
    case TextStyle::body:
        return 16;
    case TextStyle::caption:
        return 12;
    case TextStyle::caption2:
        return 12;
    }
    return 16;
}

} // namespace

void install(QApplication& application, double textScale)
{
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(std::lround(bodySize * std::clamp(textScale, 0.5, 3.0))));
    application.setFont(font);
}

double desktopTextScale()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchY() / 96.0 : 1.0;
}

double textScale()
{
    const QFont font = QApplication::font();
    return font.pixelSize() > 0 ? font.pixelSize() / bodySize : 1.0;
}

QFont font(TextStyle style, QFont::Weight weight)
{
    return systemFont(designSize(style), weight);
}

QFont font(TextStyle style)
{
    return font(style, style == TextStyle::headline ? QFont::DemiBold : QFont::Normal);
}

QFont systemFont(double size, QFont::Weight weight)
{
    QFont font = QApplication::font();
    font.setPixelSize(scaled(size));
    font.setWeight(weight);
    return font;
}

int lineHeight(TextStyle style)
{
    return scaled(designLineHeight(style));
}

int scaled(double length)
{
    return static_cast<int>(std::lround(length * textScale()));
}

} // namespace lumora::fonts
