// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/drop_zone_picture.h"

#include "ui/theme/tidewell_theme.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace lumora {
namespace {

QImage paint(DropZonePicture picture, int height)
{
    QImage image(500, height, QImage::Format_RGB32);
    image.fill(Qt::black);
    picture.area = image.rect();
    picture.iconName = QStringLiteral("square.and.arrow.down");
    QPainter painter(&image);
    picture.paint(painter);
    return image;
}

// The rows, of those inside the dashes, in which anything stands on the field.
int drawnRows(const QImage& image)
{
    int rows = 0;
    for (int y = 3; y < image.height() - 3; ++y) {
        bool drawn = false;
        for (int x = 20; x < image.width() - 20; ++x)
            drawn = drawn || image.pixel(x, y) != image.pixel(10, image.height() / 2);
        rows += drawn ? 1 : 0;
    }
    return rows;
}

TEST(DropZonePicture, LeavesOutTheIconThenTheHintWhereItIsLow)
{
    const DropZonePicture picture;
    EXPECT_GT(drawnRows(paint(picture, DropZonePicture::leastHeight())), 40);
    const int hintAlone = drawnRows(paint(picture, DropZonePicture::leastHeight() - 1));
    EXPECT_GT(hintAlone, 6);
    EXPECT_LT(hintAlone, 16);
    EXPECT_EQ(drawnRows(paint(picture, 36)), 0);
}

TEST(DropZonePicture, KeepsTheStatusAtEveryHeight)
{
    DropZonePicture picture;
    picture.status = QStringLiteral("Done");
    EXPECT_GT(drawnRows(paint(picture, 36)), 6);
}

TEST(DropZonePicture, IsLeatherUntilItIsTargeted)
{
    DropZonePicture picture;
    const auto field = [&] { return paint(picture, 170).pixelColor(10, 85); };
    EXPECT_NEAR(field().red(), 0.9 * TidewellTheme::leatherRaised().red(), 1);
    picture.targeted = true;
    EXPECT_NEAR(field().red(), 0.2 * TidewellTheme::copper().red(), 1);
}

TEST(DropZonePicture, IsOutlinedByDashesEightOnAndSixOff)
{
    DropZonePicture picture;
    picture.targeted = true;
    const QImage image = paint(picture, 170);
    int on = 0;
    for (int x = 100; x < 100 + 14 * 20; ++x)
        on += image.pixel(x, 0) == TidewellTheme::copperBright().rgb() ? 1 : 0;
    EXPECT_NEAR(on, 8 * 20, 20);
}

TEST(DropZonePicture, HasItsIconOnTheMiddleAxis)
{
    const QImage image = paint(DropZonePicture(), 170);
    int left = image.width();
    int right = 0;
    for (int y = 30; y < 80; ++y) {
        for (int x = 20; x < image.width() - 20; ++x) {
            if (image.pixel(x, y) == image.pixel(10, 85)) continue;
            left = std::min(left, x);
            right = std::max(right, x);
        }
    }
    EXPECT_NEAR(left, image.width() - 1 - right, 1);
}

TEST(DropZonePicture, InvitesAClickUnderThePointer)
{
    DropZonePicture picture;
    const QImage plain = paint(picture, 170);
    picture.hovered = true;
    const QImage hovered = paint(picture, 170);
    int brightest = 0;
    int brightestPlain = 0;
    for (int x = 100; x < 200; ++x) {
        brightest = std::max(brightest, qRed(hovered.pixel(x, 0)));
        brightestPlain = std::max(brightestPlain, qRed(plain.pixel(x, 0)));
    }
    EXPECT_GT(brightest, brightestPlain + 40);
    EXPECT_GT(qRed(hovered.pixel(10, 85)), qRed(plain.pixel(10, 85)));
}

TEST(DropZonePicture, SaysTheTimeLeftAtTheEndOfItsProgressAndNeverOverItsHint)
{
    const auto drawnIn = [](const QImage& image, const QRect& area) {
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (image.pixel(x, y) != image.pixel(10, image.height() / 2)) return true;
            }
        }
        return false;
    };
    DropZonePicture picture;
    picture.timeLeft = QStringLiteral("About 3 minutes left");
    const QRect end(380, 140, 105, 24);
    const QRect start(15, 140, 105, 24);
    EXPECT_TRUE(drawnIn(paint(picture, 170), end));
    EXPECT_FALSE(drawnIn(paint(picture, 170), start));
    picture.direction = Qt::RightToLeft;
    EXPECT_FALSE(drawnIn(paint(picture, 170), end));
    EXPECT_TRUE(drawnIn(paint(picture, 170), start));
    picture.secondLine = QStringLiteral("w").repeated(60);
    DropZonePicture without = picture;
    without.timeLeft.clear();
    const int low = DropZonePicture::leastHeight();
    EXPECT_EQ(paint(picture, low), paint(without, low));
}

TEST(DropZonePicture, DrawsItsProgressFromTheLeadingEdge)
{
    DropZonePicture picture;
    picture.progress = 0.25;
    const QRgb copper = TidewellTheme::copperBright().rgb();
    QImage image = paint(picture, 170);
    EXPECT_EQ(image.pixel(100, 168), copper);
    EXPECT_NE(image.pixel(130, 168), copper);
    EXPECT_NE(image.pixel(100, 166), copper);
    picture.direction = Qt::RightToLeft;
    image = paint(picture, 170);
    EXPECT_NE(image.pixel(100, 168), copper);
    EXPECT_EQ(image.pixel(400, 168), copper);
}

} // namespace
} // namespace lumora
