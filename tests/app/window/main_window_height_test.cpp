// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/main_window_height.h"

#include "tests/app/fake_model.h"
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

#include <gtest/gtest.h>

using namespace lumora;

namespace {

TEST(MainWindowHeightFormula, GrowsFromThreeSixtyByRowsUpToEight)
{
    const std::vector<std::pair<int, int>> cases{{-1, 360}, {0, 360}, {1, 516},  {2, 574},
                                                 {8, 922},  {9, 922}, {500, 922}};
    for (const auto& [count, height] : cases)
        EXPECT_EQ(mainWindowHeight(count), height) << count << " results";
}

TEST(MainWindowHeightFormula, HasRoomForRowsOfLargeText)
{
    fonts::install(*qApp, 2);
    EXPECT_EQ(mainWindowHeight(0), 360);
    EXPECT_EQ(mainWindowHeight(1), 414 + 116 + 44);
    EXPECT_EQ(mainWindowHeight(8), 414 + 8 * 116 + 44);
    fonts::install(*qApp, 1);
}

class MainWindowHeightTest : public testing::Test
{
protected:
    MainWindowHeightTest()
    {
        m_window.setGeometry(20, 30, 700, 360);
        m_window.show();
    }

    MainWindowHeight follow(bool reducesMotion = true)
    {
        return MainWindowHeight(m_window, m_model.model(), [reducesMotion] { return reducesMotion; });
    }

    test::FakeModel m_model;
    QWidget m_window;
};

TEST_F(MainWindowHeightTest, TheFirstResultGrowsTheWindowDownwards)
{
    const MainWindowHeight height = follow();
    ASSERT_TRUE(m_model.finish(1));
    EXPECT_EQ(m_window.geometry(), QRect(20, 30, 700, 516));
}

TEST_F(MainWindowHeightTest, AnAnimationEndsAtTheSameHeight)
{
    const MainWindowHeight height = follow(false);
    ASSERT_TRUE(m_model.finish(2));
    EXPECT_TRUE(test::waitFor([&] { return m_window.height() == 574; }));
    EXPECT_EQ(m_window.geometry().topLeft(), QPoint(20, 30));
}

TEST_F(MainWindowHeightTest, ResultsThatFollowFastDoNotHoldUpTheGrowth)
{
    MainWindowHeight height = follow(false);
    QTimer flood;
    QObject::connect(&flood, &QTimer::timeout, [&] { height.resizeFor(2); });
    flood.start(1);
    EXPECT_TRUE(test::waitFor([&] { return m_window.height() == 574; }, std::chrono::seconds(2)));
}

TEST_F(MainWindowHeightTest, AMinimisedWindowIsLeftAloneAndHasItsHeightWhenItReturns)
{
    const MainWindowHeight height = follow();
    m_window.showMinimized();
    ASSERT_TRUE(m_model.finish(2));
    EXPECT_EQ(m_window.height(), 360);
    EXPECT_TRUE(m_window.isMinimized());
    m_window.showNormal();
    EXPECT_TRUE(test::waitFor([&] { return m_window.height() == 574; }));
}

TEST_F(MainWindowHeightTest, AZoomedWindowHasItsHeightWhenItIsRestored)
{
    const MainWindowHeight height = follow();
    m_window.showMaximized();
    ASSERT_TRUE(m_model.finish(2));
    EXPECT_TRUE(m_window.isMaximized());
    m_window.showNormal();
    EXPECT_TRUE(test::waitFor([&] { return m_window.size() == QSize(700, 574); }));
}

TEST_F(MainWindowHeightTest, AWidthSetByHandStays)
{
    const MainWindowHeight height = follow();
    m_window.resize(750, 400);
    ASSERT_TRUE(m_model.finish(1));
    EXPECT_EQ(m_window.size(), QSize(750, 516));
}

TEST_F(MainWindowHeightTest, AHeightThatIsOffByOnePixelIsLeftAlone)
{
    MainWindowHeight height = follow();
    m_window.resize(700, 517);
    height.resizeFor(1);
    EXPECT_EQ(m_window.height(), 517);
    m_window.resize(700, 518);
    height.resizeFor(1);
    EXPECT_EQ(m_window.height(), 516);
}

TEST_F(MainWindowHeightTest, AHeightBeyondTheScreenIsCutToItsFreeArea)
{
    const QRect free = m_window.screen()->availableGeometry();
    ASSERT_LT(free.height(), mainWindowHeight(8));
    const MainWindowHeight height = follow();
    ASSERT_TRUE(m_model.finish(8));
    EXPECT_EQ(m_window.height(), free.height());
    EXPECT_EQ(m_window.y(), free.top());
}

} // namespace
