// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/tidewell_theme.h"

namespace lumora::TidewellTheme {

const QColor& bg()
{
    static const QColor colour = QColor::fromRgbF(0.184F, 0.149F, 0.129F);
    return colour;
}

const QColor& bgWarm()
{
    static const QColor colour = QColor::fromRgbF(0.231F, 0.176F, 0.137F);
    return colour;
}

const QColor& leather()
{
    static const QColor colour = QColor::fromRgbF(0.275F, 0.208F, 0.161F);
    return colour;
}

const QColor& leatherRaised()
{
    static const QColor colour = QColor::fromRgbF(0.337F, 0.259F, 0.204F);
    return colour;
}

const QColor& leatherDeep()
{
    static const QColor colour = QColor::fromRgbF(0.125F, 0.094F, 0.075F);
    return colour;
}

const QColor& ink()
{
    static const QColor colour = QColor::fromRgbF(0.184F, 0.149F, 0.129F);
    return colour;
}

const QColor& mutedInk()
{
    static const QColor colour = QColor::fromRgbF(0.396F, 0.361F, 0.337F);
    return colour;
}

const QColor& lightCard()
{
    static const QColor colour = QColor::fromRgbF(0.957F, 0.918F, 0.875F);
    return colour;
}

const QColor& lightCardRaised()
{
    static const QColor colour = QColor::fromRgbF(1.0F, 0.992F, 0.976F);
    return colour;
}

const QColor& cream()
{
    static const QColor colour = QColor::fromRgbF(0.969F, 0.937F, 0.902F);
    return colour;
}

const QColor& creamMuted()
{
    static const QColor colour = QColor::fromRgbF(0.969F, 0.937F, 0.902F, 0.84F);
    return colour;
}

const QColor& creamSubtle()
{
    static const QColor colour = QColor::fromRgbF(0.969F, 0.937F, 0.902F, 0.72F);
    return colour;
}

const QColor& copper()
{
    static const QColor colour = QColor::fromRgbF(0.557F, 0.325F, 0.247F);
    return colour;
}

const QColor& copperBright()
{
    static const QColor colour = QColor::fromRgbF(0.761F, 0.549F, 0.435F);
    return colour;
}

const QColor& copperStrong()
{
    static const QColor colour = QColor::fromRgbF(0.455F, 0.263F, 0.204F);
    return colour;
}

const QColor& sage()
{
    static const QColor colour = QColor::fromRgbF(0.373F, 0.478F, 0.341F);
    return colour;
}

const QColor& border()
{
    static const QColor colour = QColor::fromRgbF(0.455F, 0.263F, 0.204F, 0.22F);
    return colour;
}

const QColor& darkBorder()
{
    static const QColor colour = QColor::fromRgbF(0.455F, 0.263F, 0.204F, 0.38F);
    return colour;
}

QColor withOpacity(const QColor& colour, double opacity)
{
    QColor faded = colour;
    faded.setAlphaF(colour.alphaF() * static_cast<float>(opacity));
    return faded;
}

} // namespace lumora::TidewellTheme
