// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/drop_zone_picture.h"

#include "ui/theme/surfaces.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmapCache>

#include <algorithm>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr double cornerRadius = 8;
constexpr double dashedLineWidth = 2;
constexpr int pictureSize = 44;
constexpr int usualPadding = 16;
constexpr int usualSpacing = 14;
constexpr int leastSpacing = 4;
constexpr int leastPadding = 8;
constexpr double progressHeight = 3;
constexpr int timePadding = 10;

int iconHeight()
{
    return fonts::scaled(pictureSize);
}

int textHeight()
{
    return fonts::lineHeight(TextStyle::headline) + leastSpacing + fonts::lineHeight(TextStyle::subheadline);
}

} // namespace

int DropZonePicture::leastHeight()
{
    return iconHeight() + leastSpacing + textHeight() + 2 * leastPadding;
}

QString DropZonePicture::hint()
{
    return QStringLiteral("Drop image files or folders here, or onto the Lumora Dock icon.");
}

void DropZonePicture::paint(QPainter& painter) const
{
    painter.setRenderHint(QPainter::Antialiasing);
    paintField(painter);
    paintContent(painter);
    if (progress) paintProgress(painter);
    if (!timeLeft.isEmpty()) paintTimeLeft(painter);
    if (focused)
        paintFocusRing(painter, QRectF(area).adjusted(3, 3, -3, -3), cornerRadius - 3,
                       TidewellTheme::copperBright());
}

// Dashes are dear, and the zone is painted anew for every file.
void DropZonePicture::paintField(QPainter& painter) const
{
    const double scale = painter.device()->devicePixelRatioF();
    const QString key = QStringLiteral("drop zone %1 %2 %3 %4 %5 %6")
                            .arg(area.width())
                            .arg(area.height())
                            .arg(scale)
                            .arg(targeted)
                            .arg(hovered)
                            .arg(pressed);
    QPixmap field;
    if (!QPixmapCache::find(key, &field)) {
        field = QPixmap(area.size() * scale);
        field.setDevicePixelRatio(scale);
        field.fill(Qt::transparent);
        QPainter onField(&field);
        onField.setRenderHint(QPainter::Antialiasing);
        onField.translate(-area.topLeft());
        drawField(onField);
        onField.end();
        QPixmapCache::insert(key, field);
    }
    painter.drawPixmap(area.topLeft(), field);
}

void DropZonePicture::drawField(QPainter& painter) const
{
    using namespace TidewellTheme;
    const QColor fill = targeted ? withOpacity(copper(), 0.2) : withOpacity(leatherRaised(), 0.9);
    paintRounded(painter, area, cornerRadius, fill, Qt::transparent);
    const bool invites = hovered && !targeted;
    if (invites)
        paintRounded(painter, area, cornerRadius, withOpacity(cream(), pressed ? 0.1 : 0.05),
                     Qt::transparent);
    QPen dashes(targeted ? copperBright() : withOpacity(cream(), invites ? 0.5 : 0.18), dashedLineWidth,
                Qt::CustomDashLine, Qt::FlatCap);
    // In units of the line's width: 8 on, 6 off.
    dashes.setDashPattern({8 / dashedLineWidth, 6 / dashedLineWidth});
    painter.setPen(dashes);
    painter.setBrush(Qt::NoBrush);
    const double half = dashedLineWidth / 2;
    painter.drawRoundedRect(QRectF(area).adjusted(half, half, -half, -half), cornerRadius - half,
                            cornerRadius - half);
}

void DropZonePicture::paintProgress(QPainter& painter) const
{
    QPainterPath shape;
    shape.addRoundedRect(area, cornerRadius, cornerRadius);
    painter.save();
    painter.setClipPath(shape);
    QRectF line(area.left(), area.bottom() + 1 - progressHeight, area.width() * *progress, progressHeight);
    if (direction == Qt::RightToLeft) line.moveRight(area.right() + 1);
    painter.fillRect(line, TidewellTheme::copperBright());
    painter.restore();
}

void DropZonePicture::paintTimeLeft(QPainter& painter) const
{
    painter.setFont(fonts::font(TextStyle::caption));
    const int height = fonts::lineHeight(TextStyle::caption);
    const int width = painter.fontMetrics().horizontalAdvance(timeLeft);
    QRect line(area.right() + 1 - timePadding - width, area.bottom() + 1 - timePadding - height, width,
               height);
    const QFontMetrics hintMetrics(fonts::font(TextStyle::subheadline));
    const int middle = area.center().x() + hintMetrics.horizontalAdvance(secondLine) / 2;
    const bool isLow = area.height() < leastHeight() + 2 * (height + leastPadding);
    if (isLow && line.left() < middle + timePadding) return;
    if (direction == Qt::RightToLeft) line.moveLeft(area.left() + timePadding);
    painter.setPen(TidewellTheme::creamMuted());
    painter.drawText(line, Qt::AlignCenter | Qt::TextDontClip | Qt::TextSingleLine, timeLeft);
}

void DropZonePicture::paintContent(QPainter& painter) const
{
    const bool withIcon = area.height() >= leastHeight();
    const bool withHint = area.height() >= textHeight() + 2 * leastPadding;
    const int gaps = (withIcon ? 1 : 0) + (withHint ? 1 : 0);
    int content = fonts::lineHeight(TextStyle::headline);
    if (withIcon) content += iconHeight();
    if (withHint) content += fonts::lineHeight(TextStyle::subheadline);
    // Where the zone is lower than usual its gaps give way first; icon and texts keep their size.
    const int spare = area.height() - content - 2 * usualPadding;
    const int spacing = gaps == 0 ? 0 : std::clamp(spare / gaps, leastSpacing, usualSpacing);

    int top = area.top() + (area.height() - content - gaps * spacing) / 2;
    if (withIcon) {
        paintIcon(painter,
                  QRectF(QRectF(area).center().x() - iconHeight() / 2.0, top, iconHeight(), iconHeight()));
        top += iconHeight() + spacing;
    }
    painter.setPen(TidewellTheme::cream());
    paintLine(painter, top, TextStyle::headline, status);
    top += fonts::lineHeight(TextStyle::headline) + spacing;
    painter.setPen(TidewellTheme::creamMuted());
    if (withHint) paintLine(painter, top, TextStyle::subheadline, secondLine);
}

void DropZonePicture::paintLine(QPainter& painter, int top, TextStyle style, const QString& text) const
{
    const QRect line(area.left() + usualPadding, top, area.width() - 2 * usualPadding,
                     fonts::lineHeight(style));
    painter.setFont(fonts::font(style));
    painter.drawText(line, Qt::AlignCenter | Qt::TextDontClip,
                     painter.fontMetrics().elidedText(text, Qt::ElideRight, line.width()));
}

void DropZonePicture::paintIcon(QPainter& painter, const QRectF& place) const
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(place.center());
    painter.rotate(iconTurn);
    Symbol{iconName, pictureSize, QFont::Normal, true}.paint(painter, place.translated(-place.center()),
                                                             TidewellTheme::copperBright());
    painter.restore();
}

} // namespace lumora
