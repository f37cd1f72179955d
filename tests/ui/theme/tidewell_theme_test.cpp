// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The palette as it is seen: the colours that things are painted in, and whether their texts can be read.
#include "ui/theme/tidewell_theme.h"

#include "ui/results/drag_picture.h"
#include "ui/theme/button_styles.h"
#include "ui/theme/control_painting.h"
#include "ui/theme/surfaces.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionMenuItem>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace lumora {
namespace {

constexpr QRect area(0, 0, 101, 41);

QImage painted(const std::function<void(QPainter&)>& paint)
{
    QImage image(area.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    paint(painter);
    return image;
}

// Of a pixel in steps of an eighth bit; what is blended may be off by one.
void expectColour(const char* what, const QColor& seen, QRgb wanted)
{
    SCOPED_TRACE(what);
    EXPECT_NEAR(seen.red(), qRed(wanted), 1);
    EXPECT_NEAR(seen.green(), qGreen(wanted), 1);
    EXPECT_NEAR(seen.blue(), qBlue(wanted), 1);
}

QColor over(const QColor& ground, const QColor& colour)
{
    const auto blend = [&](float below, float above) { return below + (above - below) * colour.alphaF(); };
    return QColor::fromRgbF(blend(ground.redF(), colour.redF()), blend(ground.greenF(), colour.greenF()),
                            blend(ground.blueF(), colour.blueF()));
}

TEST(TidewellTheme, WindowsAreDarkLeatherThatIsWarmInTheMiddle)
{
    const QImage window =
        painted([](QPainter& painter) { painter.fillRect(area, windowGradient(area, Qt::LeftToRight)); });
    expectColour("corner", window.pixelColor(0, 0), 0x2F2621);
    expectColour("middle", window.pixelColor(50, 20), 0x3B2D23);
}

TEST(TidewellTheme, MenusAreLeatherWithACopperChoice)
{
    QStyleOptionMenuItem item;
    item.rect = area;
    item.state = QStyle::State_Enabled;
    const auto paint = [&](QPainter& painter) { controls::paintMenuItem(painter, item); };
    expectColour("item", painted(paint).pixelColor(50, 20), 0x463529);
    item.state |= QStyle::State_Selected;
    expectColour("chosen item", painted(paint).pixelColor(50, 20), 0x8E533F);
}

TEST(TidewellTheme, ADraggedFileHangsOnRaisedLeather)
{
    const QImage card = dragPicture(QStringLiteral("a.webp"), 1).toImage();
    expectColour("card", card.pixelColor(5, card.height() / 2), 0x564234);
}

TEST(TidewellTheme, TooltipsAreDeepLeatherInACopperFrame)
{
    QStyleOption option;
    option.rect = area;
    const QImage tip = painted([&](QPainter& painter) {
        QApplication::style()->drawPrimitive(QStyle::PE_PanelTipLabel, &option, &painter);
    });
    expectColour("ground", tip.pixelColor(50, 20), 0x201813);
    expectColour("frame", tip.pixelColor(50, 0), 0x744334);
}

TEST(TidewellTheme, QuietButtonsAreCardsWhoseEdgeDarkensUnderThePointer)
{
    const auto button = [](ButtonState state) {
        return painted([&](QPainter& painter) { QuietButtonStyle().paintGround(painter, area, state); });
    };
    expectColour("card", button({}).pixelColor(50, 20), 0xFFFDF9);
    expectColour("edge", button({}).pixelColor(50, 0), 0xE0D4CE);
    expectColour("hovered edge", button({false, true}).pixelColor(50, 0), 0xCAB6AE);
}

TEST(TidewellTheme, CheckedBoxesAreCopperWithACreamTick)
{
    QStyleOption option;
    option.rect = QRect(0, 0, 41, 41);
    option.state = QStyle::State_Enabled | QStyle::State_On;
    const QImage box = painted([&](QPainter& painter) { controls::paintCheckBox(painter, option); });
    expectColour("fill", box.pixelColor(20, 5), 0x8E533F);
    expectColour("outline", box.pixelColor(20, 0), 0x744334);
    expectColour("tick", box.pixelColor(17, 28), 0xF7EFE6);
}

TEST(TidewellTheme, ASlidersKnobLiesOnTheAxisOfItsGroove)
{
    QStyleOptionSlider slider;
    slider.rect = QRect(0, 0, 100, 22);
    slider.state = QStyle::State_Enabled;
    const QImage image =
        painted([&](QPainter& painter) { controls::paintSlider(painter, slider, QRect(41, 1, 18, 19)); });
    int top = 0;
    int bottom = 21;
    while (image.pixel(50, top) == image.pixel(50, 0))
        ++top;
    while (image.pixel(50, bottom) == image.pixel(50, 21))
        --bottom;
    EXPECT_EQ(top, 21 - bottom);
}

TEST(TidewellTheme, TheKeyboardsPlaceShinesOnLeatherAndIsDarkOnCards)
{
    QStyleOption option;
    option.rect = area;
    const auto ring = [&](const QColor& text) {
        option.palette.setColor(QPalette::WindowText, text);
        return painted([&](QPainter& painter) { controls::paintFocus(painter, option, 5); })
            .pixelColor(50, 1);
    };
    expectColour("on leather", ring(TidewellTheme::cream()), 0xC28C6F);
    expectColour("on a card", ring(TidewellTheme::ink()), 0x8E533F);
}

// The colour of the icon's most opaque pixel.
QColor inkOf(const QIcon& icon, QIcon::Mode mode = QIcon::Normal)
{
    const QImage image = icon.pixmap(QSize(16, 16), mode).toImage().convertToFormat(QImage::Format_ARGB32);
    QRgb most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > qAlpha(most)) most = image.pixel(x, y);
    }
    EXPECT_GT(qAlpha(most), 200);
    return QColor::fromRgb(most);
}

TEST(TidewellTheme, FilePanelsOfTheToolkitHaveItsIcons)
{
    for (const QStyle::StandardPixmap tool :
         {QStyle::SP_FileDialogBack, QStyle::SP_ArrowBack, QStyle::SP_ArrowForward,
          QStyle::SP_FileDialogToParent, QStyle::SP_FileDialogNewFolder, QStyle::SP_FileDialogListView,
          QStyle::SP_FileDialogDetailedView})
        expectColour("tool", inkOf(QApplication::style()->standardIcon(tool)), 0xF7EFE6);
    for (const QStyle::StandardPixmap entry :
         {QStyle::SP_DirIcon, QStyle::SP_FileIcon, QStyle::SP_ComputerIcon, QStyle::SP_DriveHDIcon}) {
        const QIcon icon = QApplication::style()->standardIcon(entry);
        expectColour("entry", inkOf(icon), 0x744334);
        expectColour("chosen entry", inkOf(icon, QIcon::Selected), 0xF7EFE6);
    }
}

TEST(TidewellTheme, StockControlsTakeItsColoursInPlaceOfTheDesktops)
{
    const QPalette palette = QApplication::palette();
    expectColour("window", palette.color(QPalette::Window), 0x2F2621);
    expectColour("text of a window", palette.color(QPalette::WindowText), 0xF7EFE6);
    expectColour("field", palette.color(QPalette::Base), 0xFFFDF9);
    expectColour("text of a field", palette.color(QPalette::Text), 0x2F2621);
    expectColour("placeholder", palette.color(QPalette::PlaceholderText), 0x655C56);
    expectColour("card", palette.color(QPalette::Button), 0xF4EADF);
}

double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

// As the accessibility guidelines for the web count it: 1 to 21.
double contrast(const QColor& text, const QColor& ground)
{
    const double first = luminance(over(ground, text)) + 0.05;
    const double second = luminance(ground) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

struct Text
{
    const char* name;
    const QColor& (*colour)();
    const QColor& (*ground)();
    double least;
};

TEST(TidewellTheme, ItsTextsCanBeRead)
{
    using namespace TidewellTheme;
    const Text texts[] = {
        {"titles", cream, bgWarm, 11},
        {"messages of rows", creamMuted, leatherRaised, 6},
        {"sizes of rows", creamSubtle, leatherRaised, 4.5},
        {"menu items", cream, leather, 9},
        {"chosen menu items", cream, copper, 4.5},
        {"titles of totals", copperBright, leatherRaised, 3},
        {"tooltips", cream, leatherDeep, 14},
        {"preferences", ink, lightCard, 12},
        {"placeholders", mutedInk, lightCardRaised, 6},
        {"headings of preferences", copperStrong, lightCard, 6.5},
    };
    for (const Text& text : texts)
        EXPECT_GE(contrast(text.colour(), text.ground()), text.least) << text.name;
}

TEST(TidewellTheme, FadesAColourByItsOwnOpacity)
{
    EXPECT_NEAR(TidewellTheme::withOpacity(TidewellTheme::creamMuted(), 0.5).alphaF(), 0.42, 1e-4);
}

} // namespace
} // namespace lumora
