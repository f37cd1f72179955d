// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/fonts.h"

#include "ui/results/result_row.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace lumora {
namespace {

class Fonts : public testing::Test
{
protected:
    ~Fonts() override
    {
        QApplication::setFont(m_before);
        fonts::install(*qApp, 1);
    }

    const QFont m_before = QApplication::font();
};

TEST_F(Fonts, GiveThreeLinesOfAResultRowTheirPlaceAtEveryTextScale)
{
    using enum fonts::TextStyle;
    constexpr int gaps = 2 * 2;
    for (const double scale : {0.5, 0.8, 1.0, 1.25, 1.5, 2.0, 3.0}) {
        fonts::install(*qApp, scale);
        const int lines = fonts::lineHeight(body) + fonts::lineHeight(caption) + fonts::lineHeight(caption2);
        EXPECT_LE(lines + gaps, ResultRow::height()) << scale;
        for (const fonts::TextStyle style : {body, caption, caption2})
            EXPECT_GT(fonts::lineHeight(style), fonts::font(style).pixelSize()) << scale;
    }
}

TEST_F(Fonts, FollowTheFamilyOfTheDesktopAndItsTextScale)
{
    QApplication::setFont(QFont(QStringLiteral("DejaVu Sans")));
    fonts::install(*qApp, 2);
    const QFont title = fonts::font(fonts::TextStyle::title2, QFont::Bold);
    EXPECT_EQ(title.family(), QStringLiteral("DejaVu Sans"));
    EXPECT_EQ(title.pixelSize(), 34);
    EXPECT_EQ(fonts::scaled(58), 116);
    QApplication::setFont(m_before);
    EXPECT_EQ(fonts::scaled(58), 58);
}

} // namespace
} // namespace lumora
