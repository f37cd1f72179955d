// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QImage>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace lumora {
namespace {

constexpr const char* symbolNames[] = {
    "arrow.counterclockwise",
    "arrow.left.and.right",
    "arrow.left",
    "arrow.right",
    "arrow.triangle.2.circlepath",
    "arrow.up.and.down",
    "arrow.up.arrow.down",
    "arrow.up.left.and.arrow.down.right",
    "arrow.up.right",
    "arrow.up",
    "aspectratio",
    "chart.line.uptrend.xyaxis",
    "checkmark.circle.fill",
    "checkmark.seal",
    "cup.and.saucer.fill",
    "desktopcomputer",
    "doc.badge.gearshape",
    "doc",
    "exclamationmark.triangle.fill",
    "folder.badge.plus",
    "folder",
    "gearshape",
    "list.bullet",
    "magnifyingglass",
    "minus.circle.fill",
    "paintpalette",
    "photo.on.rectangle.angled",
    "photo",
    "seal.fill",
    "seal",
    "slider.horizontal.3",
    "square.and.arrow.down",
    "square.grid.2x2",
    "trash",
    "xmark",
};

int paintedPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += qAlpha(image.pixel(x, y)) > 64;
    }
    return count;
}

class EverySymbol : public ::testing::TestWithParam<const char*>
{
};

TEST_P(EverySymbol, IsDrawnInItsColourInsideItsSquare)
{
    const Symbol symbol{QString::fromLatin1(GetParam()), 44};
    const QImage image = symbol.pixmap(TidewellTheme::copper(), 2).toImage();
    EXPECT_EQ(image.size(), QSize(2 * symbol.extent(), 2 * symbol.extent()));
    EXPECT_GT(paintedPixels(image), image.width() * image.height() / 40);
    const QImage edges[] = {
        image.copy(0, 0, image.width(), 1), image.copy(0, image.height() - 1, image.width(), 1),
        image.copy(0, 0, 1, image.height()), image.copy(image.width() - 1, 0, 1, image.height())};
    for (const QImage& edge : edges)
        EXPECT_EQ(paintedPixels(edge), 0) << "touches the edge of its square";
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() == 255) {
                EXPECT_EQ(pixel.rgb(), TidewellTheme::copper().rgb());
            }
        }
    }
}

std::string caseName(const ::testing::TestParamInfo<const char*>& info)
{
    std::string name = info.param;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Symbols, EverySymbol, ::testing::ValuesIn(symbolNames), caseName);

TEST(Symbols, HierarchicalRenderingFadesTheSecondLayer)
{
    Symbol symbol{QStringLiteral("square.and.arrow.down"), 44};
    const QImage plain = symbol.pixmap(Qt::black, 1).toImage();
    symbol.hierarchical = true;
    const QImage shaded = symbol.pixmap(Qt::black, 1).toImage();
    // The box at the bottom is the second layer, the arrow in the middle the first.
    const int x = plain.width() / 4;
    const int boxBottom = plain.height() * 21 / 24;
    EXPECT_GT(qAlpha(plain.pixel(x * 2, boxBottom)), 200);
    EXPECT_NEAR(qAlpha(shaded.pixel(x * 2, boxBottom)), qAlpha(plain.pixel(x * 2, boxBottom)) / 2.0, 8);
    EXPECT_EQ(qAlpha(shaded.pixel(x * 2, x)), qAlpha(plain.pixel(x * 2, x)));
}

TEST(Symbols, HeavierTextHasHeavierStrokes)
{
    const Symbol regular{QStringLiteral("gearshape"), 24};
    const Symbol bold{QStringLiteral("gearshape"), 24, QFont::Bold};
    EXPECT_GT(paintedPixels(bold.pixmap(Qt::black, 2).toImage()),
              paintedPixels(regular.pixmap(Qt::black, 2).toImage()));
}

TEST(Symbols, AnUnknownNameDrawsNothing)
{
    EXPECT_EQ(paintedPixels(Symbol{QStringLiteral("no.such.symbol"), 16}.pixmap(Qt::black, 1).toImage()), 0);
}

} // namespace
} // namespace lumora
