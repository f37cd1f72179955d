// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/gallery/gallery.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QDir>
#include <QPainter>

namespace lumora::gallery {

// One contact sheet: a row a symbol, a column a size.
void symbolPages(const Gallery& gallery)
{
    const QStringList files = QDir(QStringLiteral(":/symbols")).entryList();
    constexpr double sizes[] = {10, 11, 16, 24, 44};
    constexpr int rowHeight = 60;
    constexpr int columns = 4;
    constexpr int columnWidth = 190;
    const auto rows = static_cast<int>((files.size() + columns - 1) / columns);
    QImage sheet(QSize(columns * columnWidth, rows * rowHeight) * gallery.scale(), QImage::Format_RGB32);
    sheet.setDevicePixelRatio(gallery.scale());
    sheet.fill(TidewellTheme::bg());
    QPainter painter(&sheet);
    for (int index = 0; index < files.size(); ++index) {
        QRectF cell((index % columns) * columnWidth + 6, (index / columns) * rowHeight, 0, rowHeight);
        for (const double size : sizes) {
            Symbol symbol{files[index].chopped(4), size, size < 20 ? QFont::DemiBold : QFont::Normal,
                          size > 40};
            cell.setWidth(symbol.extent());
            symbol.paint(painter, cell, TidewellTheme::cream());
            cell.translate(symbol.extent() + 8, 0);
        }
    }
    painter.end();
    gallery.save(sheet, QStringLiteral("symbols"));
}

} // namespace lumora::gallery
