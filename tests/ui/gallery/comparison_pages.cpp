// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/comparison/comparison_window.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>
#include <QRandomGenerator>

#include <cmath>

namespace lumora::gallery {
namespace {

using Window = test::ComparisonWindow;
using Path = std::filesystem::path;

void paintHills(QPainter& painter, QSize size, double height, const QColor& colour)
{
    QPainterPath hills(QPointF(0, size.height()));
    for (int x = 0; x <= size.width(); ++x) {
        const double wave =
            std::sin(x * 9.0 / size.width() + height * 5) + std::sin(x * 23.0 / size.width()) / 4;
        hills.lineTo(x, size.height() * (height - 0.05 * wave));
    }
    hills.lineTo(size.width(), size.height());
    painter.fillPath(hills, colour);
}

// A coast at dusk, with the grain that encoders lose.
QImage photograph(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    QLinearGradient sky(0, 0, 0, size.height());
    sky.setColorAt(0, QColor(52, 78, 128));
    sky.setColorAt(0.5, QColor(232, 160, 108));
    sky.setColorAt(1, QColor(250, 214, 150));
    painter.fillRect(image.rect(), sky);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 244, 214));
    painter.drawEllipse(QPointF(size.width() * 0.68, size.height() * 0.42), size.height() * 0.07,
                        size.height() * 0.07);
    paintHills(painter, size, 0.62, QColor(98, 92, 120));
    paintHills(painter, size, 0.74, QColor(58, 70, 84));
    paintHills(painter, size, 0.88, QColor(28, 42, 44));
    painter.end();
    QRandomGenerator random(7);
    for (int y = 0; y < size.height(); ++y) {
        auto* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const int grain = random.bounded(-9, 10);
            const auto grained = [grain](int value) { return std::clamp(value + grain, 0, 255); };
            row[x] = qRgb(grained(qRed(row[x])), grained(qGreen(row[x])), grained(qBlue(row[x])));
        }
    }
    return image;
}

void addPair(Window& window, const Path& name, QSize size, int outputWidth)
{
    const Path source = window.folder() / name;
    const Path output = Path(source).replace_extension(".web.jpg");
    const QImage image = photograph(size);
    image.save(QString::fromStdString(source.string()), "JPG", 97);
    image.scaledToWidth(outputWidth, Qt::SmoothTransformation)
        .save(QString::fromStdString(output.string()), "JPG", 24);
    window.add(source, output);
}

void addIcon(Window& window)
{
    QImage image(400, 400, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(210, 110, 60), 40));
    painter.drawEllipse(60, 60, 280, 280);
    painter.end();
    const Path source = window.folder() / "ring.png";
    const Path output = window.folder() / "ring-web.png";
    for (const Path& file : {source, output})
        image.save(QString::fromStdString(file.string()), "PNG");
    window.add(source, output);
}

} // namespace

void comparisonPages(const Gallery& gallery)
{
    const auto save = [&](const char* name, QSize size, auto prepare) {
        Window window;
        window.view.resize(size);
        prepare(window);
        gallery.save(window.view, QString::fromLatin1(name));
    };
    const auto usualPair = [](Window& window) {
        addPair(window, "beach.jpg", {1920, 1280}, 1280);
        window.compare();
    };
    const QSize usual(1000, 720);
    save("comparison", usual, usualPair);
    save("comparison-zoomed", usual, [&](Window& window) {
        usualPair(window);
        window.canvas().zoomTo(4);
        window.canvas().panBy({-330, 200});
        window.canvas().setSplit(0.4);
        window.waitUntilComplete();
    });
    save("comparison-difference", usual, [&](Window& window) {
        usualPair(window);
        window.canvas().setShowsDifference(true);
    });
    save("comparison-flipped-focus", usual, [&](Window& window) {
        usualPair(window);
        window.canvas().setFlipped(true);
        window.canvas().setFocus();
    });
    save("comparison-right-to-left", usual, [&](Window& window) {
        window.view.setLayoutDirection(Qt::RightToLeft);
        usualPair(window);
        window.canvas().setSplit(0.7);
    });
    save("comparison-transparent", usual, [](Window& window) {
        addIcon(window);
        window.compare();
    });
    save("comparison-missing", usual, [](Window& window) {
        addPair(window, "beach.jpg", {1920, 1280}, 1280);
        std::filesystem::remove(window.folder() / "beach.jpg");
        window.compare();
    });
    save("comparison-both-missing", QSize(700, 500), [](Window& window) {
        addPair(window, "beach.jpg", {192, 128}, 128);
        std::filesystem::remove(window.folder() / "beach.jpg");
        std::filesystem::remove(window.folder() / "beach.web.jpg");
        window.compare();
    });
    save("comparison-loading", usual, [&](Window& window) {
        usualPair(window);
        window.canvas().setProgress(0.4);
    });
    save("comparison-beginning", QSize(700, 500), [&](Window& window) {
        usualPair(window);
        window.canvas().clear();
        window.canvas().setProgress(0.1);
    });
    save("comparison-narrow", QSize(480, 360), [](Window& window) {
        addPair(window,
                "Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichen-in-sehr-langer-Fassung-7.jpg",
                {1280, 1920}, 640);
        addPair(window, "second.jpg", {192, 128}, 128);
        window.compare(1);
    });
    fonts::install(*qApp, 1.5);
    save("comparison-large-text", QSize(1000, 720), usualPair);
    fonts::install(*qApp, 1);
}

} // namespace lumora::gallery
