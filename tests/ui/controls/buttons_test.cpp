// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/temporary_directory.h"
#include "ui/controls/link_button.h"
#include "ui/controls/links.h"
#include "ui/controls/styled_button.h"
#include "ui/theme/button_styles.h"
#include "ui/theme/tidewell_logo_mark.h"
#include "ui/theme/tidewell_theme.h"

#include <QDesktopServices>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

#include <fstream>

namespace lumora {
namespace {

QImage ground(const ButtonStyle& style, bool pressed)
{
    QImage image(101, 41, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    style.paintGround(painter, image.rect(), {pressed, false});
    return image;
}

TEST(CopperButtonStyle, FadesItsGradientWhilePressedWithoutChangingColours)
{
    const CopperButtonStyle style;
    const QColor still = ground(style, false).pixelColor(12, 4);
    const QColor pressed = ground(style, true).pixelColor(12, 4);
    EXPECT_EQ(still.alpha(), 255);
    EXPECT_NEAR(pressed.alphaF(), 0.73, 0.02);
    EXPECT_NEAR(pressed.red(), still.red(), 3);
    EXPECT_NEAR(pressed.green(), still.green(), 3);
}

TEST(CopperButtonStyle, RunsFromCopperToCopperStrong)
{
    const QImage image = ground(CopperButtonStyle(), false);
    EXPECT_NEAR(image.pixelColor(4, 3).red(), TidewellTheme::copper().red(), 4);
    EXPECT_NEAR(image.pixelColor(96, 37).red(), TidewellTheme::copperStrong().red(), 4);
}

TEST(QuietButtonStyle, IsALightCardThatFadesWhilePressed)
{
    const QuietButtonStyle style;
    EXPECT_EQ(ground(style, false).pixelColor(50, 20), TidewellTheme::lightCardRaised().toRgb().rgb());
    EXPECT_NEAR(ground(style, true).pixelColor(50, 20).alphaF(), 0.72, 0.01);
}

TEST(StyledButton, PadsItsLabelAndIsPressedByReturn)
{
    const QuietButtonStyle quiet;
    const CopperButtonStyle copper;
    StyledButton small(quiet, QString(), QStringLiteral("Go"));
    StyledButton large(copper, QString(), QStringLiteral("Go"));
    EXPECT_EQ(small.sizeHint().height(), 16 + 2 * 7);
    EXPECT_EQ(large.sizeHint() - small.sizeHint(), QSize(4, 2));
    QSignalSpy clicked(&small, &QPushButton::clicked);
    QTest::keyClick(&small, Qt::Key_Return);
    QTest::keyClick(&small, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 2);
}

// Stands for the browser.
class Browser : public QObject
{
    Q_OBJECT

public:
    Browser() { QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "open"); }
    ~Browser() override { QDesktopServices::unsetUrlHandler(QStringLiteral("https")); }

    QList<QUrl> pages;

public Q_SLOTS:
    void open(const QUrl& page) { pages << page; }
};

TEST(Links, OpenTheirPages)
{
    Browser browser;
    TidewellLink site;
    BuyMeACoffeeLink coffee;
    site.click();
    QTest::keyClick(&coffee, Qt::Key_Space);
    EXPECT_EQ(browser.pages, QList<QUrl>({links::website(), links::donations()}));
}

TEST(Links, NameTheMakerAndSayWhereTheyLead)
{
    EXPECT_EQ(TidewellLink(true).text(), QStringLiteral("Tidewell"));
    EXPECT_TRUE(TidewellLink().text().contains(QStringLiteral("Tidewell")));
    EXPECT_GT(TidewellLink().sizeHint().width(), TidewellLink(true).sizeHint().width());
    EXPECT_EQ(BuyMeACoffeeLink().text(), QStringLiteral("Buy me a coffee"));
    EXPECT_FALSE(TidewellLink().toolTip().isEmpty());
    EXPECT_FALSE(BuyMeACoffeeLink().accessibleDescription().isEmpty());
}

QColor centreOf(TidewellLogoMark& mark)
{
    QImage image(mark.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    mark.render(&image, {}, {}, QWidget::RenderFlags());
    return image.pixelColor(23, 23);
}

TEST(TidewellLogoMark, FillsItsSquareWithTheLogoOfTheBundle)
{
    test::TemporaryDirectory bundle;
    std::filesystem::create_directories(bundle / "Contents/Resources");
    std::ofstream(bundle / "Contents/Resources/TidewellLogo.svg")
        << R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 8 8"><rect width="8" height="8" fill="#00ff00"/></svg>)";
    TidewellLogoMark mark(bundle.path());
    EXPECT_EQ(mark.size(), QSize(46, 46));
    EXPECT_EQ(centreOf(mark), QColor(0, 255, 0));
}

TEST(TidewellLogoMark, ShowsTheSealWithoutALogoAtTheSameSize)
{
    test::TemporaryDirectory bundle;
    TidewellLogoMark mark(bundle.path());
    EXPECT_EQ(mark.size(), QSize(46, 46));
    EXPECT_EQ(centreOf(mark).rgb(), TidewellTheme::cream().rgb());
}

} // namespace
} // namespace lumora

#include "buttons_test.moc"
