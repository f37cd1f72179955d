// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/control_painting.h"

#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QFontMetrics>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>

#include <algorithm>

namespace lumora::controls {
namespace {

using namespace TidewellTheme;

constexpr int tickColumn = 24;
constexpr int endPadding = 16;
constexpr int shortcutGap = 24;

bool isSection(const QStyleOptionMenuItem& option)
{
    return option.menuItemType == QStyleOptionMenuItem::Separator && !option.text.isEmpty();
}

QFont sectionFont(const QStyleOptionMenuItem& option)
{
    QFont font = option.font;
    font.setPixelSize(std::max(1, font.pixelSize() * 10 / 13));
    font.setWeight(QFont::Bold);
    return font;
}

void paintSeparator(QPainter& painter, const QStyleOptionMenuItem& option)
{
    if (isSection(option)) {
        painter.setFont(sectionFont(option));
        painter.setPen(copperBright());
        painter.drawText(
            option.rect.adjusted(10, 2, -10, 0),
            static_cast<int>(QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter)),
            option.text);
        return;
    }
    painter.fillRect(QRect(option.rect.left() + 10, option.rect.center().y(), option.rect.width() - 20, 1),
                     withOpacity(cream(), 0.14));
}

void paintTexts(QPainter& painter, const QStyleOptionMenuItem& option)
{
    const QRect label = option.rect.adjusted(tickColumn, 0, -endPadding, 0);
    const QStringList texts = option.text.split(u'\t');
    const auto align = [&](Qt::Alignment side) {
        return static_cast<int>(QStyle::visualAlignment(option.direction, side | Qt::AlignVCenter)) |
               Qt::TextHideMnemonic | Qt::TextSingleLine;
    };
    const QRect place = QStyle::visualRect(option.direction, option.rect, label);
    painter.drawText(place, align(Qt::AlignLeft), texts.first());
    if (texts.size() > 1) painter.drawText(place, align(Qt::AlignRight), texts.last());
}

} // namespace

void paintMenuPanel(QPainter& painter, const QRect& area)
{
    // Corners stay square: without a compositor rounded ones would be black.
    painter.fillRect(area, leather());
    const QColor outline = withOpacity(cream(), 0.18);
    painter.fillRect(QRect(area.left(), area.top(), area.width(), 1), outline);
    painter.fillRect(QRect(area.left(), area.bottom(), area.width(), 1), outline);
    painter.fillRect(QRect(area.left(), area.top() + 1, 1, area.height() - 2), outline);
    painter.fillRect(QRect(area.right(), area.top() + 1, 1, area.height() - 2), outline);
}

void paintMenuItem(QPainter& painter, const QStyleOptionMenuItem& option)
{
    painter.save();
    painter.setClipRect(option.rect);
    painter.fillRect(option.rect, leather());
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        paintSeparator(painter, option);
        painter.restore();
        return;
    }
    const bool enabled = option.state.testFlag(QStyle::State_Enabled);
    if (enabled && option.state.testFlag(QStyle::State_Selected)) {
        paintRounded(painter, QRectF(option.rect).adjusted(4, 0, -4, 0), 5, copper(), Qt::transparent);
    }
    const QColor colour = withOpacity(cream(), enabled ? 1 : 0.5);
    if (option.checked) {
        const QRect tick(option.rect.left() + 7, option.rect.top(), tickColumn - 7, option.rect.height());
        paintTick(painter, QRectF(QStyle::visualRect(option.direction, option.rect, tick)).center(), 14,
                  colour);
    }
    painter.setFont(option.font);
    painter.setPen(colour);
    paintTexts(painter, option);
    painter.restore();
}

QSize menuItemSize(const QStyleOptionMenuItem& option)
{
    const bool section = isSection(option);
    if (option.menuItemType == QStyleOptionMenuItem::Separator && !section) return {20, 9};
    const QFontMetrics metrics(section ? sectionFont(option) : option.font);
    const int shortcut = option.text.contains(u'\t') ? shortcutGap : 0;
    const int width =
        metrics.size(Qt::TextSingleLine | Qt::TextHideMnemonic, QString(option.text).remove(u'\t')).width();
    return {tickColumn + width + shortcut + endPadding, metrics.height() + 8};
}

} // namespace lumora::controls
