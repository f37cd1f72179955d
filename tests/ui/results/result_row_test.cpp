// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the painted rows show.
#include "ui/results/result_row.h"

#include "tests/ui/drop_window_objects.h"
#include "ui/results/results_list_model.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QApplication>
#include <QPainter>
#include <QStyleOptionViewItem>

#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

class PaintedRow : public testing::Test
{
protected:
    // The row on black, 600 wide, over the place that it is given.
    QImage paint(int number, QStyle::State state = QStyle::State_None)
    {
        QImage image(600, ResultRow::height(), QImage::Format_RGB32);
        image.fill(Qt::black);
        QStyleOptionViewItem option;
        option.rect = image.rect();
        option.state = state;
        QPainter painter(&image);
        ResultRow(model.index(number), option).paint(painter, false);
        return image;
    }
    static bool shows(const QImage& image, const QRect& area, const QColor& colour)
    {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (image.pixelColor(x, y).rgb() == colour.rgb()) return true;
            }
        }
        return false;
    }
    static int brightestRed(const QImage& image, const QRect& area)
    {
        int brightest = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                brightest = std::max(brightest, image.pixelColor(x, y).red());
        }
        return brightest;
    }
    static bool isBlack(const QImage& image, const QRect& area)
    {
        QImage black(area.size(), image.format());
        black.fill(Qt::black);
        return image.copy(area) == black;
    }

    const QRect statusIcon{10, 20, 16, 18};
    const QRect button{562, 15, 28, 28};
    const QRect thirdLine{34, 41, 400, 11};
    const QRect divider{0, 57, 600, 1};
    test::DropWindowObjects objects;
    ResultsListModel model{objects.model};
};

TEST_F(PaintedRow, OfASuccessHasACheckASizeLineAndAButton)
{
    objects.addSuccess("/photos/a.jpg", 2'000'000, 1'000'000, "Optimized");
    const QImage row = paint(0);
    EXPECT_TRUE(shows(row, statusIcon, TidewellTheme::sage()));
    EXPECT_FALSE(isBlack(row, thirdLine));
    EXPECT_FALSE(isBlack(row, button));
}

TEST_F(PaintedRow, OfAFailureHasAWarningAMessageNoSizeLineAndNoButton)
{
    objects.addFailure("/photos/a.jpg", "The image could not be read.");
    const QImage row = paint(0);
    EXPECT_TRUE(shows(row, statusIcon, TidewellTheme::copperBright()));
    EXPECT_FALSE(shows(row, statusIcon, TidewellTheme::sage()));
    EXPECT_FALSE(isBlack(row, QRect(34, 30, 400, 12)));
    EXPECT_TRUE(isBlack(row, QRect(34, 47, 400, 10)));
    EXPECT_TRUE(isBlack(row, button));
}

TEST_F(PaintedRow, OfASkippedFileLooksOtherThanAFailure)
{
    objects.addFailure("/photos/a.jpg", "Skipped because the output file already exists.");
    const QImage skipped = paint(0);
    objects.addFailure("/photos/a.jpg", "The image could not be read.");
    EXPECT_NE(skipped.copy(statusIcon), paint(0).copy(statusIcon));
    EXPECT_FALSE(shows(skipped, statusIcon, TidewellTheme::copperBright()));
    EXPECT_EQ(model.index(1).data(Qt::AccessibleDescriptionRole),
              QStringLiteral("Skipped because the output file already exists."));
}

TEST_F(PaintedRow, IsPalerFromLineToLineAndSageWhereItSucceeded)
{
    objects.addSuccess("/photos/HHH.jpg", 2'000'000, 1'000'000, "HHH");
    EXPECT_TRUE(shows(paint(0), statusIcon, QColor(0x5F, 0x7A, 0x57)));
    // Large enough for strokes of whole pixels.
    fonts::install(*qApp, 3);
    const QImage row = paint(0);
    EXPECT_NEAR(brightestRed(row, QRect(64, 25, 430, 48)), 247, 1);
    EXPECT_NEAR(brightestRed(row, QRect(64, 75, 430, 36)), 247 * 0.84, 1);
    EXPECT_NEAR(brightestRed(row, QRect(64, 113, 430, 36)), 247 * 0.72, 1);
    fonts::install(*qApp, 1);
}

TEST_F(PaintedRow, HasADividerUnlessItIsTheLast)
{
    objects.addSuccess("/photos/a.jpg", 2, 1, "Optimized");
    objects.addSuccess("/photos/b.jpg", 2, 1, "Optimized");
    EXPECT_FALSE(isBlack(paint(0), divider));
    EXPECT_TRUE(isBlack(paint(1), divider));
}

TEST_F(PaintedRow, MarksHoverAndFocus)
{
    objects.addSuccess("/photos/a.jpg", 2, 1, "Optimized");
    const QImage still = paint(0);
    const QImage hovered = paint(0, QStyle::State_MouseOver);
    EXPECT_NE(still, hovered);
    EXPECT_TRUE(shows(paint(0, QStyle::State_HasFocus), QRect(1, 28, 3, 1), TidewellTheme::copperBright()));
}

TEST_F(PaintedRow, ShowsAMessageOfSeveralLinesAsOneElidedLine)
{
    objects.addFailure("/photos/a.jpg", "one\ntwo");
    objects.addFailure("/photos/a.jpg", "one two");
    EXPECT_EQ(paint(0).copy(QRect(0, 0, 600, 57)), paint(1).copy(QRect(0, 0, 600, 57)));
    objects.addFailure("/photos/a.jpg", std::string(4000, 'm'));
    EXPECT_TRUE(isBlack(paint(0), QRect(591, 0, 9, 57)));
}

TEST_F(PaintedRow, KeepsBothEndsOfALongName)
{
    objects.addFailure("/photos/" + std::string(200, 'm') + "-A.jpg", "x");
    objects.addFailure("/photos/" + std::string(200, 'm') + "-B.jpg", "x");
    EXPECT_NE(paint(0), paint(1));
}

TEST(LettersOfTheInterface, AreNotJoinedIntoSigns)
{
    const QFontMetricsF metrics(fonts::font(fonts::TextStyle::caption2));
    EXPECT_DOUBLE_EQ(metrics.horizontalAdvance(QStringLiteral("->")),
                     metrics.horizontalAdvance(u'-') + metrics.horizontalAdvance(u'>'));
    const QFont emoji = fonts::shapedFor(QStringLiteral("e\u0301.png"), fonts::font(fonts::TextStyle::body));
    EXPECT_FALSE(emoji.styleStrategy() & QFont::PreferNoShaping);
}

} // namespace
} // namespace lumora
