// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/elided_label.h"

#include "ui/theme/fonts.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>

namespace lumora {
namespace {

constexpr int leastWidth = 40;
constexpr double disabledOpacity = 0.45;

} // namespace

ElidedLabel::ElidedLabel(std::function<QFont()> font, QWidget* parent)
    : QWidget(parent), m_font(std::move(font))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ElidedLabel::display(const QString& text, const QColor& colour)
{
    m_text = text;
    m_colour = colour;
    setAccessibleName(text);
    updateGeometry();
    update();
}

QSize ElidedLabel::sizeHint() const
{
    const QFontMetrics metrics(fonts::shapedFor(m_text, m_font()));
    return {metrics.horizontalAdvance(m_text), metrics.height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {std::min(leastWidth, sizeHint().width()), sizeHint().height()};
}

QString ElidedLabel::shortened() const
{
    return QFontMetrics(fonts::shapedFor(m_text, m_font())).elidedText(m_text, Qt::ElideMiddle, width());
}

bool ElidedLabel::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    if (event->type() == QEvent::ToolTip)
        setToolTip(shortened() == m_text ? QString() : m_text.toHtmlEscaped());
    return QWidget::event(event);
}

// The edge follows the window's direction, not that of the text.
void ElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!isEnabled()) painter.setOpacity(disabledOpacity);
    painter.setFont(fonts::shapedFor(m_text, m_font()));
    painter.setPen(m_colour);
    const Qt::Alignment edge = isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
    painter.drawText(rect(),
                     static_cast<int>(edge | Qt::AlignAbsolute | Qt::AlignVCenter) | Qt::TextSingleLine,
                     shortened());
}

} // namespace lumora
