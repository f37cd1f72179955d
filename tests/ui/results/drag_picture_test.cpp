// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/drag_picture.h"

#include "ui/theme/tidewell_theme.h"

#include <QImage>

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(DragPicture, IsACardThatGrowsWithTheNameUpToALimit)
{
    const QPixmap small = dragPicture(QStringLiteral("a.webp"), 1);
    const QPixmap large = dragPicture(QString(4000, u'm'), 1);
    EXPECT_LT(small.width(), 100);
    EXPECT_GT(large.width(), 200);
    EXPECT_LT(large.width(), 280);
    EXPECT_EQ(small.height(), large.height());
    EXPECT_EQ(small.toImage().pixelColor(5, small.height() / 2),
              TidewellTheme::leatherRaised().toRgb().rgb());
}

TEST(DragPicture, ShowsTheNameAtTheScreensScale)
{
    const QPixmap first = dragPicture(QStringLiteral("a.webp"), 2);
    EXPECT_EQ(first.size(), 2 * dragPicture(QStringLiteral("a.webp"), 1).size());
    EXPECT_NE(first.toImage(), dragPicture(QStringLiteral("b.webp"), 2).toImage());
}

} // namespace
} // namespace lumora
