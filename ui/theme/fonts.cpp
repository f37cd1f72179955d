// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

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

// The toolkit tells windows of a new application font, and of their parts those alone that inherit it.
void tellParts()
{
    for (QWidget* widget : QApplication::allWidgets()) {
        if (widget->isWindow()) continue;
        QEvent change(QEvent::ApplicationFontChange);
        QCoreApplication::sendEvent(widget, &change);
    }
}

} // namespace

void install(QApplication& application, double textScale)
{
    QFont font = QApplication::font();
    font.setPixelSize(static_cast<int>(std::lround(bodySize * std::clamp(textScale, 0.5, 3.0))));
    application.setFont(font);
    tellParts();
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
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

QFont shapedFor(const QString& text, QFont font)
{
    const auto isAscii = [](QChar character) { return character.unicode() < 0x80; };
    if (!std::all_of(text.begin(), text.end(), isAscii)) font.setStyleStrategy(QFont::PreferDefault);
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
