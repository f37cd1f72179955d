// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/drag_picture.h"

#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QFontMetrics>
#include <QPainter>

namespace lumora {
namespace {

constexpr QMargins padding(10, 7, 12, 7);
constexpr int spacing = 6;
constexpr int widestName = 220;

} // namespace

QPixmap dragPicture(const QString& fileName, double devicePixelRatio)
{
    using namespace TidewellTheme;
    const QFont font =
        fonts::shapedFor(fileName, fonts::font(fonts::TextStyle::subheadline, QFont::DemiBold));
    const QFontMetrics metrics(font);
    const QString name = metrics.elidedText(fileName, Qt::ElideMiddle, fonts::scaled(widestName));
    const Symbol symbol{QStringLiteral("photo"), 11, QFont::DemiBold};
    const QRect label(padding.left(), padding.top(),
                      symbol.extent() + spacing + metrics.horizontalAdvance(name),
                      fonts::lineHeight(fonts::TextStyle::headline));
    const QRect card = label.marginsAdded(padding);

    QPixmap picture(card.size() * devicePixelRatio);
    picture.setDevicePixelRatio(devicePixelRatio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paintRounded(painter, card, 8, leatherRaised(), copperBright());
    symbol.paint(painter, QRectF(label.topLeft(), QSizeF(symbol.extent(), label.height())), cream());
    painter.setFont(font);
    painter.setPen(cream());
    painter.drawText(label, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip | Qt::TextSingleLine, name);
    return picture;
}

} // namespace lumora
