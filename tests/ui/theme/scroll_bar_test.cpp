// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/scroll_bar.h"

#include <QStyleOptionSlider>

#include <gtest/gtest.h>

namespace lumora::controls {
namespace {

QStyleOptionSlider bar(int page, int maximum, int value)
{
    QStyleOptionSlider option;
    option.rect = QRect(0, 0, 12, 400);
    option.orientation = Qt::Vertical;
    option.maximum = maximum;
    option.pageStep = page;
    option.sliderPosition = value;
    return option;
}

QRect thumb(const QStyleOptionSlider& option)
{
    return scrollBarPart(option, QStyle::SC_ScrollBarSlider);
}

TEST(ScrollBar, HasAThumbAsLongAsTheShareThatIsInSight)
{
    EXPECT_EQ(thumb(bar(100, 100, 0)), QRect(0, 0, 12, 200));
    EXPECT_EQ(thumb(bar(100, 300, 0)), QRect(0, 0, 12, 100));
}

TEST(ScrollBar, MovesItsThumbFromEndToEnd)
{
    EXPECT_EQ(thumb(bar(100, 300, 150)).top(), 150);
    EXPECT_EQ(thumb(bar(100, 300, 300)).bottom(), 399);
}

TEST(ScrollBar, KeepsAThumbToGrabOverAHundredThousandRows)
{
    const int maximum = 100'000 * 58 - 464;
    EXPECT_EQ(thumb(bar(464, maximum, 0)).height(), shortestScrollThumb);
    EXPECT_EQ(thumb(bar(464, maximum, maximum)).bottom(), 399);
}

TEST(ScrollBar, HasPagesOnBothSidesOfItsThumbAndNoButtons)
{
    const QStyleOptionSlider option = bar(100, 300, 150);
    EXPECT_EQ(scrollBarPart(option, QStyle::SC_ScrollBarSubPage), QRect(0, 0, 12, 150));
    EXPECT_EQ(scrollBarPart(option, QStyle::SC_ScrollBarAddPage), QRect(0, 250, 12, 150));
    EXPECT_TRUE(scrollBarPart(option, QStyle::SC_ScrollBarAddLine).isEmpty());
    EXPECT_TRUE(scrollBarPart(option, QStyle::SC_ScrollBarSubLine).isEmpty());
}

} // namespace
} // namespace lumora::controls
