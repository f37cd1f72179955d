// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/shown_picture.h"

#include <gtest/gtest.h>

#include <QPainter>

namespace lumora {
namespace {

class ShownPictureTest : public testing::Test
{
protected:
    ShownPictureTest()
    {
        m_geometry.setFrame({4000, 2000});
        m_geometry.setView({1000, 500});
    }

    void giveAll(ShownPicture& picture, const QColor& colour)
    {
        while (const auto part = picture.lackFor(m_geometry)) {
            EXPECT_LE(part->columns * part->rows, 1000 * 500);
            QImage pixels(part->columns, part->rows, QImage::Format_ARGB32_Premultiplied);
            pixels.fill(colour);
            picture.take(*part, pixels);
        }
    }

    QImage painted(const ShownPicture& picture) const
    {
        QImage image(m_geometry.view(), QImage::Format_RGB32);
        image.fill(Qt::black);
        QPainter painter(&image);
        picture.paint(painter, m_geometry);
        return image;
    }

    ComparisonGeometry m_geometry;
};

TEST_F(ShownPictureTest, WantsTheWholeAsLargeAsItIsSeen)
{
    ShownPicture picture;
    EXPECT_EQ(picture.lackFor(m_geometry), std::nullopt);
    picture.setSize({4000, 2000});
    EXPECT_EQ(picture.lackFor(m_geometry), (PicturePart{1000, 500, 0, 0, 1000, 500}));
    giveAll(picture, Qt::red);
    EXPECT_EQ(picture.lackFor(m_geometry), std::nullopt);
}

TEST_F(ShownPictureTest, IsNeverDrawnLargerThanItIs)
{
    ShownPicture picture;
    picture.setSize({400, 200});
    EXPECT_EQ(picture.lackFor(m_geometry), (PicturePart{400, 200, 0, 0, 400, 200}));
    giveAll(picture, Qt::red);
    m_geometry.zoomTo(8);
    EXPECT_EQ(picture.lackFor(m_geometry), std::nullopt);
}

TEST_F(ShownPictureTest, WantsThePartInSightWhenZoomedIn)
{
    ShownPicture picture;
    picture.setSize({4000, 2000});
    giveAll(picture, Qt::red);
    m_geometry.zoomTo(1);
    EXPECT_EQ(picture.lackFor(m_geometry), (PicturePart{4000, 2000, 1500, 750, 1000, 500}));
    m_geometry.zoomTo(0.5);
    EXPECT_EQ(picture.lackFor(m_geometry), (PicturePart{2000, 1000, 500, 250, 1000, 500}));
}

TEST_F(ShownPictureTest, HasItsSurroundingsWhereThereIsRoom)
{
    ShownPicture picture;
    picture.setSize({4000, 2000});
    giveAll(picture, Qt::red);
    m_geometry.zoomTo(4);
    giveAll(picture, Qt::red);
    m_geometry.panBy({200, 100});
    EXPECT_EQ(picture.lackFor(m_geometry), std::nullopt);
    m_geometry.panBy({4000, 0});
    EXPECT_NE(picture.lackFor(m_geometry), std::nullopt);
}

// Otherwise it would be asked for without end.
TEST_F(ShownPictureTest, IsSatisfiedByAPartThatIsAllOfIt)
{
    ShownPicture picture;
    picture.setSize({4000, 100});
    m_geometry.setFrame({4000, 100});
    giveAll(picture, Qt::red);
    m_geometry.zoomTo(1);
    giveAll(picture, Qt::red);
    EXPECT_EQ(picture.lackFor(m_geometry), std::nullopt);
    m_geometry.fit();
    EXPECT_EQ(picture.lackFor(m_geometry), std::nullopt);
}

TEST_F(ShownPictureTest, CoversTheFrameWhateverItsOwnSize)
{
    for (const QSize size : {QSize(4000, 2000), QSize(1333, 667), QSize(40, 20)}) {
        for (const double zoom : {0.25, 1.0, 3.0}) {
            ShownPicture picture;
            picture.setSize(size);
            m_geometry.zoomTo(zoom);
            giveAll(picture, Qt::red);
            const QImage image = painted(picture);
            EXPECT_EQ(image.pixelColor(1, 1), QColor(Qt::red)) << size.width() << ' ' << zoom;
            EXPECT_EQ(image.pixelColor(998, 498), QColor(Qt::red)) << size.width() << ' ' << zoom;
        }
    }
}

TEST_F(ShownPictureTest, PutsThePartOverTheWhole)
{
    ShownPicture picture;
    picture.setSize({4000, 2000});
    giveAll(picture, Qt::red);
    m_geometry.zoomTo(1);
    giveAll(picture, Qt::green);
    EXPECT_EQ(painted(picture).pixelColor(500, 250), QColor(Qt::green));
    m_geometry.panBy({300, 0});
    EXPECT_EQ(painted(picture).pixelColor(100, 250), QColor(Qt::red));
    EXPECT_EQ(painted(picture).pixelColor(500, 250), QColor(Qt::green));
    m_geometry.fit();
    EXPECT_EQ(painted(picture).pixelColor(500, 250), QColor(Qt::red));
}

} // namespace
} // namespace lumora
