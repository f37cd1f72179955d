// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/styled_button.h"

#include "ui/theme/button_styles.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/symbols.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace lumora {
namespace {

constexpr int labelSpacing = 6;
constexpr double disabledOpacity = 0.45;

QFont labelFont()
{
    return fonts::systemFont(13, QFont::DemiBold);
}

Symbol labelSymbol(const QString& name)
{
    return {name, 13, QFont::DemiBold};
}

} // namespace

StyledButton::StyledButton(const ButtonStyle& style, QString symbolName, const QString& text, QWidget* parent)
    : QPushButton(text, parent), m_style(style), m_symbolName(std::move(symbolName))
{
    setAutoDefault(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

int StyledButton::labelWidth() const
{
    const int symbolWidth = m_symbolName.isEmpty() ? 0 : labelSymbol(m_symbolName).extent();
    const int textWidth = text().isEmpty() ? 0 : QFontMetrics(labelFont()).horizontalAdvance(text());
    return symbolWidth + textWidth + (symbolWidth && textWidth ? labelSpacing : 0);
}

QSize StyledButton::sizeHint() const
{
    const int height = fonts::lineHeight(fonts::TextStyle::body);
    return QSize(labelWidth(), height).grownBy(m_style.padding());
}

bool StyledButton::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    return QPushButton::event(event);
}

void StyledButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!isEnabled()) painter.setOpacity(disabledOpacity);
    m_style.paintGround(painter, rect(), {isDown(), isEnabled() && underMouse()});
    paintLabel(painter);
    if (hasFocus()) paintFocusRing(painter, rect(), 8, m_style.focusColour());
}

void StyledButton::paintLabel(QPainter& painter)
{
    QRect label = rect().marginsRemoved(m_style.padding());
    label.setLeft(label.left() + std::max(0, (label.width() - labelWidth()) / 2));
    label.setWidth(labelWidth());
    if (!m_symbolName.isEmpty()) {
        const Symbol symbol = labelSymbol(m_symbolName);
        const QRect place(label.left(), label.top(), symbol.extent(), label.height());
        symbol.paint(painter, style()->visualRect(layoutDirection(), label, place), m_style.labelColour());
    }
    painter.setFont(labelFont());
    painter.setPen(m_style.labelColour());
    painter.drawText(label,
                     static_cast<int>(Qt::AlignVCenter | (isRightToLeft() ? Qt::AlignLeft : Qt::AlignRight)),
                     text());
}

} // namespace lumora
