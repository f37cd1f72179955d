// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/scroll_bar.h"

#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QStyleOptionSlider>

#include <algorithm>

namespace lumora::controls {
namespace {

// In 64 bits: a hundred thousand rows times the bar's length exceed 32.
int thumbLength(const QStyleOptionSlider& bar, int length)
{
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    const auto fitting =
        static_cast<int>(qint64(length) * bar.pageStep / std::max<qint64>(1, range + bar.pageStep));
    return std::min(length, std::max(shortestScrollThumb, fitting));
}

} // namespace

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part)
{
    const bool upright = bar.orientation == Qt::Vertical;
    const int length = upright ? bar.rect.height() : bar.rect.width();
    const int thumb = thumbLength(bar, length);
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - thumb, bar.upsideDown);
    const auto span = [&](int from, int to) {
        return upright ? QRect(bar.rect.left(), from, bar.rect.width(), to - from)
                       : QRect(from, bar.rect.top(), to - from, bar.rect.height());
    };
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar.rect;
    case QStyle::SC_ScrollBarSlider:
        return span(start, start + thumb);
    case QStyle::SC_ScrollBarSubPage:
        return span(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return span(start + thumb, length);
    default:
        return {};
    }
}

void paintScrollBar(QPainter& painter, const QStyleOptionSlider& bar)
{
    if (bar.maximum <= bar.minimum) return;
    const bool active = bar.activeSubControls.testFlag(QStyle::SC_ScrollBarSlider);
    const QRectF thumb = QRectF(scrollBarPart(bar, QStyle::SC_ScrollBarSlider)).adjusted(3, 3, -3, -3);
    paintRounded(painter, thumb, std::min(thumb.width(), thumb.height()) / 2,
                 TidewellTheme::withOpacity(TidewellTheme::copperBright(), active ? 0.9 : 0.6),
                 Qt::transparent);
}

} // namespace lumora::controls
