// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_geometry.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

ComparisonGeometry geometryOf(QSize frame, QSize view)
{
    ComparisonGeometry geometry;
    geometry.setFrame(frame);
    geometry.setView(view);
    return geometry;
}

// Where a point of the view lies in the frame, in parts of its edges.
QPointF partAt(const ComparisonGeometry& geometry, QPointF point)
{
    const QRectF frame = geometry.frame();
    return {(point.x() - frame.x()) / frame.width(), (point.y() - frame.y()) / frame.height()};
}

TEST(ComparisonGeometry, ShowsTheWholePicturesInTheMiddleAtFirst)
{
    const auto geometry = geometryOf({4000, 2000}, {1000, 800});
    EXPECT_EQ(geometry.frame(), QRect(0, 150, 1000, 500));
    EXPECT_DOUBLE_EQ(geometry.zoom(), 0.25);
    EXPECT_TRUE(geometry.fits());
}

TEST(ComparisonGeometry, DoesNotEnlargeSmallPicturesToFit)
{
    const auto geometry = geometryOf({100, 50}, {1000, 800});
    EXPECT_EQ(geometry.frame(), QRect(450, 375, 100, 50));
}

TEST(ComparisonGeometry, ZoomsFromFittingToEightTimes)
{
    auto geometry = geometryOf({4000, 2000}, {1000, 800});
    geometry.zoomTo(100);
    EXPECT_EQ(geometry.zoom(), 8);
    geometry.zoomTo(0.01);
    EXPECT_DOUBLE_EQ(geometry.zoom(), 0.25);
    EXPECT_TRUE(geometry.fits());
}

TEST(ComparisonGeometry, ShowsSquarePixelsFromTwiceTheSizeOn)
{
    auto geometry = geometryOf({4000, 2000}, {1000, 800});
    geometry.zoomTo(1.99);
    EXPECT_FALSE(geometry.isSharp());
    geometry.zoomTo(2);
    EXPECT_TRUE(geometry.isSharp());
}

TEST(ComparisonGeometry, KeepsWhatIsUnderThePointerWhenItZooms)
{
    auto geometry = geometryOf({4000, 2000}, {1000, 800});
    geometry.zoomTo(1);
    const QPointF pointer(700, 300);
    const QPointF before = partAt(geometry, pointer);
    geometry.zoomTo(4, pointer);
    EXPECT_NEAR(partAt(geometry, pointer).x(), before.x(), 0.0005);
    EXPECT_NEAR(partAt(geometry, pointer).y(), before.y(), 0.0005);
}

TEST(ComparisonGeometry, PansToTheEdgesAndNotBeyond)
{
    auto geometry = geometryOf({4000, 2000}, {1000, 800});
    geometry.zoomTo(1);
    geometry.panBy({-100, 50});
    EXPECT_EQ(geometry.frame().topLeft(), QPoint(-1600, -550));
    geometry.panBy({1e6, 1e6});
    EXPECT_EQ(geometry.frame().topLeft(), QPoint(0, 0));
    geometry.panBy({-1e6, -1e6});
    EXPECT_EQ(geometry.frame().topLeft(), QPoint(-3000, -1200));
}

TEST(ComparisonGeometry, KeepsTheMiddleAlongAnEdgeThatFits)
{
    auto geometry = geometryOf({4000, 400}, {1000, 800});
    geometry.zoomTo(1);
    geometry.panBy({0, 100});
    EXPECT_EQ(geometry.frame().top(), 200);
}

TEST(ComparisonGeometry, FitsAgainWhenTheViewChangesAndKeepsAChosenZoom)
{
    auto geometry = geometryOf({4000, 2000}, {1000, 800});
    geometry.setView({500, 800});
    EXPECT_DOUBLE_EQ(geometry.zoom(), 0.125);
    geometry.zoomTo(1);
    geometry.setView({1000, 800});
    EXPECT_EQ(geometry.zoom(), 1);
    geometry.setView({8000, 8000});
    EXPECT_TRUE(geometry.fits());
}

TEST(ComparisonGeometry, TellsWhichPartIsInSight)
{
    auto geometry = geometryOf({4000, 2000}, {1000, 500});
    EXPECT_EQ(geometry.visible(), QRectF(0, 0, 1, 1));
    geometry.zoomTo(1);
    EXPECT_EQ(geometry.visible(), QRectF(0.375, 0.375, 0.25, 0.25));
}

} // namespace
} // namespace lumora
