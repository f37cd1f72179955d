// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/symbols.h"

#include "ui/theme/fonts.h"

#include <QFile>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <QTransform>

#include <algorithm>
#include <cmath>

// A static library's resources are linked only when they are asked for, and the macro works in no namespace.
static void loadSymbolFiles()
{
    Q_INIT_RESOURCE(symbols);
}

namespace lumora {
namespace {

// A symbol reaches a little above the capitals and below the baseline of the text beside it.
constexpr double extentOfSize = 1.2;
constexpr double secondaryOpacity = 0.5;

double strokeWidth(QFont::Weight weight)
{
    if (weight >= QFont::Bold) return 2.4;
    return weight >= QFont::DemiBold ? 2.0 : 1.6;
}

QByteArray source(const Symbol& symbol)
{
    static const bool loaded = (loadSymbolFiles(), true);
    Q_UNUSED(loaded)
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(symbol.name));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QByteArray svg = file.readAll();
    svg.replace(QByteArrayLiteral("stroke-width=\"1.8\""),
                "stroke-width=\"" + QByteArray::number(strokeWidth(symbol.weight)) + '"');
    return svg;
}

// One pass over the picture; the second layer can be left out.
void paintLayers(QPainter& painter, QByteArray svg, bool withSecondary)
{
    if (!withSecondary)
        svg.replace(QByteArrayLiteral("id=\"secondary\""), QByteArrayLiteral("display=\"none\""));
    QSvgRenderer renderer(svg);
    if (renderer.isValid()) renderer.render(&painter);
}

QPixmap render(const Symbol& symbol, const QColor& colour, int pixels)
{
    QPixmap picture(pixels, pixels);
    picture.fill(Qt::transparent);
    const QByteArray svg = source(symbol);
    if (svg.isEmpty()) return picture;
    QPixmap faded = picture;
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    if (symbol.hierarchical) {
        // Faded as one layer: overlapping strokes of translucent elements would show.
        QPainter layer(&faded);
        layer.setRenderHint(QPainter::Antialiasing);
        paintLayers(layer, svg, true);
        layer.end();
        painter.setOpacity(secondaryOpacity);
        painter.drawPixmap(0, 0, faded);
        painter.setOpacity(1);
    }
    paintLayers(painter, svg, !symbol.hierarchical);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), colour);
    return picture;
}

} // namespace

int Symbol::extent() const
{
    return static_cast<int>(std::lround(fonts::scaled(size) * extentOfSize));
}

QPixmap Symbol::pixmap(const QColor& colour, double devicePixelRatio) const
{
    const int pixels = static_cast<int>(std::lround(extent() * devicePixelRatio));
    const QString key = QStringLiteral("lumora-symbol/%1/%2/%3/%4/%5")
                            .arg(name, QString::number(pixels), colour.name(QColor::HexArgb),
                                 QString::number(strokeWidth(weight)), QString::number(hierarchical));
    QPixmap picture;
    if (!QPixmapCache::find(key, &picture)) {
        picture = render(*this, colour, pixels);
        QPixmapCache::insert(key, picture);
    }
    picture.setDevicePixelRatio(devicePixelRatio);
    return picture;
}

void Symbol::paint(QPainter& painter, const QRectF& area, const QColor& colour) const
{
    // Whole device pixels keep the strokes as sharp as they were rendered.
    // Their number comes from the transform: a widget that is drawn into a picture has not the picture's
    // ratio.
    const QTransform device = painter.deviceTransform();
    const double ratio = std::max(0.1, std::hypot(device.m11(), device.m12()));
    const QPointF corner = area.center() - QPointF(extent(), extent()) / 2;
    const QPointF aligned(std::round(corner.x() * ratio) / ratio, std::round(corner.y() * ratio) / ratio);
    painter.drawPixmap(aligned, pixmap(colour, ratio));
}

QIcon Symbol::icon(const QColor& colour) const
{
    QIcon icon;
    for (const double ratio : {1.0, 1.5, 2.0, 3.0})
        icon.addPixmap(pixmap(colour, ratio));
    return icon;
}

} // namespace lumora
