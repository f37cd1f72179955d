// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace lumora {
namespace {

struct NamedColour
{
    const char* name;
    const QColor& (*colour)();
    float red, green, blue, opacity;
};

TEST(TidewellTheme, HoldsTheEighteenColours)
{
    using namespace TidewellTheme;
    const NamedColour colours[] = {
        {"bg", bg, 0.184F, 0.149F, 0.129F, 1},
        {"bgWarm", bgWarm, 0.231F, 0.176F, 0.137F, 1},
        {"leather", leather, 0.275F, 0.208F, 0.161F, 1},
        {"leatherRaised", leatherRaised, 0.337F, 0.259F, 0.204F, 1},
        {"leatherDeep", leatherDeep, 0.125F, 0.094F, 0.075F, 1},
        {"ink", ink, 0.184F, 0.149F, 0.129F, 1},
        {"mutedInk", mutedInk, 0.396F, 0.361F, 0.337F, 1},
        {"lightCard", lightCard, 0.957F, 0.918F, 0.875F, 1},
        {"lightCardRaised", lightCardRaised, 1.0F, 0.992F, 0.976F, 1},
        {"cream", cream, 0.969F, 0.937F, 0.902F, 1},
        {"creamMuted", creamMuted, 0.969F, 0.937F, 0.902F, 0.84F},
        {"creamSubtle", creamSubtle, 0.969F, 0.937F, 0.902F, 0.72F},
        {"copper", copper, 0.557F, 0.325F, 0.247F, 1},
        {"copperBright", copperBright, 0.761F, 0.549F, 0.435F, 1},
        {"copperStrong", copperStrong, 0.455F, 0.263F, 0.204F, 1},
        {"sage", sage, 0.373F, 0.478F, 0.341F, 1},
        {"border", border, 0.455F, 0.263F, 0.204F, 0.22F},
        {"darkBorder", darkBorder, 0.455F, 0.263F, 0.204F, 0.38F},
    };
    constexpr float step = 1.0F / 65535;
    for (const NamedColour& row : colours) {
        SCOPED_TRACE(row.name);
        EXPECT_NEAR(row.colour().redF(), row.red, step);
        EXPECT_NEAR(row.colour().greenF(), row.green, step);
        EXPECT_NEAR(row.colour().blueF(), row.blue, step);
        EXPECT_NEAR(row.colour().alphaF(), row.opacity, step);
    }
}

TEST(TidewellTheme, FadesAColourByItsOwnOpacity)
{
    EXPECT_NEAR(TidewellTheme::withOpacity(TidewellTheme::creamMuted(), 0.5).alphaF(), 0.42, 1e-4);
}

TEST(Fonts, ThreeLinesOfAResultRowFitItsPitch)
{
    using namespace fonts;
    const int lines =
        lineHeight(TextStyle::body) + lineHeight(TextStyle::caption) + lineHeight(TextStyle::caption2);
    EXPECT_EQ(7 + lines + 2 * 2 + 7, 58);
}

TEST(Fonts, FollowTheFamilyOfTheDesktopAndItsTextScale)
{
    const QFont before = QApplication::font();
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
    fonts::install(*qApp, 2);
    const QFont title = fonts::font(fonts::TextStyle::title2, QFont::Bold);
    EXPECT_EQ(title.family(), QStringLiteral("DejaVu Sans"));
    EXPECT_EQ(title.pixelSize(), 34);
    EXPECT_EQ(fonts::scaled(58), 116);
    QApplication::setFont(before);
    EXPECT_EQ(fonts::scaled(58), 58);
}

} // namespace
} // namespace lumora
