// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/branded_window.h"

#include "app/window/branded_window_accessible.h"
#include "tests/app/wait_for.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

using namespace lumora;

namespace {

class BrandedWindowTest : public testing::Test
{
protected:
    static QAbstractButton* control(BrandedWindow& window, const char* name)
    {
        for (auto* button : window.findChildren<QAbstractButton*>()) {
            if (button->accessibleName() == QLatin1String(name)) return button;
        }
        return nullptr;
    }
    static QRect freeArea() { return QGuiApplication::primaryScreen()->availableGeometry(); }

    QMenu m_menu;
    const WindowParameters m_small{
        QStringLiteral("Title"), QStringLiteral("Identifier"), {700, 360}, {600, 320}};
};

TEST_F(BrandedWindowTest, TheContentFillsTheWindowToTheTop)
{
    auto* content = new QWidget;
    BrandedWindow window(m_small, content, m_menu);
    window.show();
    EXPECT_EQ(content->geometry(), QRect(0, 0, 700, 360));
}

TEST_F(BrandedWindowTest, OpensCentredWithItsTitleIdentifierAndMinimum)
{
    const BrandedWindow window(m_small, new QWidget, m_menu);
    EXPECT_LE((window.geometry().center() - freeArea().center()).manhattanLength(), 2);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Title"));
    EXPECT_EQ(window.objectName(), QStringLiteral("Identifier"));
    EXPECT_EQ(window.minimumSize(), QSize(600, 320));
}

TEST_F(BrandedWindowTest, SizesThatTheScreenCannotHoldAreCutToIt)
{
    const WindowParameters large{QStringLiteral("T"), QStringLiteral("I"), {9000, 8000}, {7000, 6000}};
    const BrandedWindow window(large, new QWidget, m_menu);
    EXPECT_EQ(window.size(), freeArea().size());
    EXPECT_EQ(window.minimumSize(), freeArea().size());
}

TEST_F(BrandedWindowTest, AContentThatTheScreenCannotHoldIsNotCutOff)
{
    auto* content = new QWidget;
    content->setMinimumSize(7000, 6000);
    BrandedWindow window({QStringLiteral("T"), QStringLiteral("I"), {9000, 8000}, {7000, 6000}}, content,
                         m_menu);
    window.show();
    EXPECT_EQ(content->size(), freeArea().size());
}

TEST_F(BrandedWindowTest, AContentThatWantsMoreDoesNotRaiseTheMinimum)
{
    auto* content = new QWidget;
    content->setMinimumSize(5000, 5000);
    BrandedWindow window(m_small, content, m_menu);
    window.show();
    EXPECT_EQ(window.size(), m_small.size);
}

TEST_F(BrandedWindowTest, TheControlsCloseMinimiseAndZoom)
{
    BrandedWindow window(m_small, new QWidget, m_menu);
    window.bringToFront();
    control(window, "Zoom")->click();
    EXPECT_TRUE(window.isMaximized());
    control(window, "Zoom")->click();
    EXPECT_FALSE(window.isMaximized());
    control(window, "Minimize")->click();
    EXPECT_TRUE(window.isMinimized());
    window.bringToFront();
    EXPECT_FALSE(window.isMinimized());
    control(window, "Close")->click();
    EXPECT_FALSE(window.isVisible());
    window.bringToFront();
    EXPECT_TRUE(window.isVisible());
}

TEST_F(BrandedWindowTest, TheMenuButtonOpensTheApplicationMenu)
{
    m_menu.addAction(QStringLiteral("About Lumora"));
    BrandedWindow window(m_small, new QWidget, m_menu);
    window.show();
    control(window, "Menu")->click();
    EXPECT_TRUE(m_menu.isVisible());
    m_menu.close();
    EXPECT_TRUE(window.actions().contains(m_menu.actions().constFirst()));
}

TEST_F(BrandedWindowTest, TheKeyboardStartsInTheContent)
{
    auto* content = new QWidget;
    auto* first = new QPushButton(content);
    content->setFocusPolicy(Qt::ClickFocus);
    BrandedWindow window(m_small, content, m_menu);
    window.bringToFront();
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), first);
}

TEST_F(BrandedWindowTest, KeysOpenTheMenuAndCloseTheWindow)
{
    m_menu.addAction(QStringLiteral("About Lumora"));
    BrandedWindow window(m_small, new QWidget, m_menu);
    window.bringToFront();
    ASSERT_TRUE(test::waitFor([&] { return window.isActiveWindow(); }));
    QTest::keyClick(&window, Qt::Key_F10);
    EXPECT_TRUE(m_menu.isVisible());
    m_menu.close();
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(BrandedWindowTest, StaysOpenWhereItMayNotClose)
{
    BrandedWindow window(m_small, new QWidget, m_menu);
    int closed = 0;
    bool mayClose = false;
    QObject::connect(&window, &BrandedWindow::closed, [&] { ++closed; });
    window.setMayClose([&] { return mayClose; });
    window.bringToFront();
    window.close();
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(closed, 0);
    mayClose = true;
    window.close();
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(closed, 1);
}

TEST_F(BrandedWindowTest, HasAHairlineWhereNothingThrowsAShadow)
{
    auto* content = new QWidget;
    content->setAutoFillBackground(true);
    BrandedWindow window(m_small, content, m_menu);
    window.show();
    const auto edge = [&] { return window.grab().toImage().pixel(0, 200); };
    const auto inside = [&] { return window.grab().toImage().pixel(20, 200); };
    EXPECT_NE(edge(), inside());
    window.showMaximized();
    EXPECT_EQ(edge(), inside());
}

TEST_F(BrandedWindowTest, IsAWindowToAssistiveTechnology)
{
    exposeBrandedWindows();
    BrandedWindow window(m_small, new QWidget, m_menu);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window)->role(), QAccessible::Window);
}

} // namespace
