// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/link_button.h"

#include "ui/controls/links.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

constexpr int padding = 7;
constexpr int spacing = 5;

QFont labelFont()
{
    return fonts::systemFont(11, QFont::DemiBold);
}

const Symbol& arrow()
{
    static const Symbol symbol{QStringLiteral("arrow.up.right"), 9, QFont::Bold};
    return symbol;
}

} // namespace

LinkButton::LinkButton(QString symbolName, const QString& text, QUrl address, QWidget* parent)
    : QPushButton(text, parent), m_symbolName(std::move(symbolName)), m_address(std::move(address))
{
    setAutoDefault(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    connect(this, &QPushButton::clicked, this, &LinkButton::open);
}

void LinkButton::open() const
{
    if (m_address.isValid()) QDesktopServices::openUrl(m_address);
}

QSize LinkButton::sizeHint() const
{
    const Symbol symbol{m_symbolName, 11, QFont::DemiBold};
    const int width =
        symbol.extent() + QFontMetrics(labelFont()).horizontalAdvance(text()) + arrow().extent();
    return {width + 2 * spacing + 2 * padding, fonts::scaled(18)};
}

bool LinkButton::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    return QPushButton::event(event);
}

void LinkButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QColor colour = underMouse() || isDown() ? TidewellTheme::cream() : TidewellTheme::copperBright();
    const Symbol symbol{m_symbolName, 11, QFont::DemiBold};
    const QRect label = rect().adjusted(padding, 0, -padding, 0);
    const auto place = [&](int left, int width) {
        return style()->visualRect(layoutDirection(), rect(), QRect(left, 0, width, height()));
    };
    symbol.paint(painter, place(label.left(), symbol.extent()), colour);
    arrow().paint(painter, place(label.right() + 1 - arrow().extent(), arrow().extent()), colour);
    painter.setFont(labelFont());
    painter.setPen(colour);
    const int textLeft = label.left() + symbol.extent() + spacing;
    painter.drawText(place(textLeft, label.right() + 1 - arrow().extent() - spacing - textLeft),
                     Qt::AlignCenter, text());
    if (hasFocus()) paintFocusRing(painter, rect(), 5, TidewellTheme::copperBright());
}

TidewellLink::TidewellLink(bool compact, QWidget* parent)
    : LinkButton(QStringLiteral("seal"),
                 compact ? QStringLiteral("Tidewell") : QStringLiteral("Crafted with care by Tidewell"),
                 links::website(), parent)
{
    setToolTip(QStringLiteral("Open the Tidewell website"));
    setAccessibleDescription(toolTip());
}

BuyMeACoffeeLink::BuyMeACoffeeLink(QWidget* parent)
    : LinkButton(QStringLiteral("cup.and.saucer.fill"), QStringLiteral("Buy me a coffee"), links::donations(),
                 parent)
{
    setToolTip(QStringLiteral("Open the Tidewell donation page"));
    setAccessibleDescription(toolTip());
}

} // namespace lumora
