// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/styled_label.h"

#include "ui/controls/figures.h"
#include "ui/theme/fonts.h"

#include <QEvent>
#include <QPainter>

#include <cmath>

namespace lumora {

StyledLabel::StyledLabel(const QString& text, FontMaker font, const QColor& colour, QWidget* parent)
    : QLabel(text, parent), m_font(std::move(font))
{
    setTextFormat(Qt::PlainText);
    QPalette shades = palette();
    shades.setColor(QPalette::WindowText, colour);
    QColor faded = colour;
    faded.setAlphaF(colour.alphaF() * 0.45F);
    shades.setColor(QPalette::Disabled, QPalette::WindowText, faded);
    setPalette(shades);
    refresh();
}

void StyledLabel::setUpperCase()
{
    m_upperCase = true;
    refresh();
}

void StyledLabel::setTrailingColumn(int width)
{
    m_columnWidth = width;
    refresh();
}

void StyledLabel::refresh()
{
    QFont font = m_font();
    if (m_upperCase) font.setCapitalization(QFont::AllUppercase);
    setFont(font);
    if (m_columnWidth > 0) setFixedWidth(fonts::scaled(m_columnWidth));
    // The edge follows the layout, not the direction of the text: an English text in a mirrored window stands
    // right.
    const bool atRight = (m_columnWidth > 0) != isRightToLeft();
    setAlignment((atRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter);
}

bool StyledLabel::event(QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::ApplicationFontChange || type == QEvent::LayoutDirectionChange) refresh();
    return QLabel::event(event);
}

QSize FiguresLabel::sizeHint() const
{
    const QFontMetricsF metrics(font());
    return {static_cast<int>(std::ceil(figuresWidth(metrics, text()))),
            static_cast<int>(std::ceil(metrics.height()))};
}

void FiguresLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QFontMetricsF metrics(font());
    const double x = alignment().testFlag(Qt::AlignRight) ? width() - figuresWidth(metrics, text()) : 0;
    painter.setFont(font());
    painter.setPen(palette().color(foregroundRole()));
    drawFigures(painter, {x, (height() + metrics.ascent() - metrics.descent()) / 2}, text());
}

SymbolLabel::SymbolLabel(Symbol symbol, const QColor& colour, QWidget* parent)
    : QWidget(parent), m_symbol(std::move(symbol)), m_colour(colour)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize SymbolLabel::sizeHint() const
{
    return {m_symbol.extent(), m_symbol.extent()};
}

bool SymbolLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    return QWidget::event(event);
}

void SymbolLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    m_symbol.paint(painter, rect(), m_colour);
}

} // namespace lumora
