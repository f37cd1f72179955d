// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/chip_button.h"

#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QEvent>
#include <QFontMetrics>
#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

constexpr int spacing = 4;
constexpr QMargins padding{7, 4, 7, 4};
constexpr double lineHeight = 14;

QFont chipFont()
{
    return fonts::systemFont(11, QFont::DemiBold);
}

Symbol chipSymbol(const QString& name)
{
    return {name, 10, QFont::DemiBold};
}

} // namespace

ChipButton::ChipButton(const QString& helpText, QWidget* parent) : QPushButton(parent)
{
    setToolTip(helpText);
    setAccessibleDescription(helpText);
    setAutoDefault(true);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

void ChipButton::display(const QString& systemName, const QString& text)
{
    m_systemName = systemName;
    setText(text);
    updateGeometry();
    update();
}

void ChipButton::setCompact(bool compact)
{
    if (m_isCompact == compact) return;
    m_isCompact = compact;
    updateGeometry();
    update();
}

int ChipButton::widthWhen(bool compact) const
{
    const int symbol = chipSymbol(m_systemName).extent();
    const int label = compact ? 0 : spacing + QFontMetrics(chipFont()).horizontalAdvance(text());
    return padding.left() + symbol + label + padding.right();
}

QSize ChipButton::sizeHint() const
{
    return {widthWhen(m_isCompact), fonts::scaled(lineHeight) + padding.top() + padding.bottom()};
}

bool ChipButton::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    return QPushButton::event(event);
}

void ChipButton::paintEvent(QPaintEvent*)
{
    using namespace TidewellTheme;
    QPainter painter(this);
    if (!isEnabled()) painter.setOpacity(0.45);
    const bool marked = m_marksChecked && isChecked();
    const double depth = isDown() || marked ? 0.24 : isEnabled() && underMouse() ? 0.16 : 0.1;
    paintCapsule(painter, rect(), withOpacity(cream(), depth),
                 marked ? copperBright() : withOpacity(cream(), 0.14));
    const QRect label = rect().marginsRemoved(padding);
    const Symbol symbol = chipSymbol(m_systemName);
    const auto place = [&](int left, int width) {
        return style()->visualRect(layoutDirection(), rect(),
                                   QRect(left, label.top(), width, label.height()));
    };
    symbol.paint(painter, place(label.left(), symbol.extent()), cream());
    if (!m_isCompact) {
        const int textLeft = label.left() + symbol.extent() + spacing;
        painter.setFont(chipFont());
        painter.setPen(cream());
        painter.drawText(place(textLeft, label.right() + 1 - textLeft), Qt::AlignCenter | Qt::TextSingleLine,
                         text());
    }
    if (hasFocus()) paintFocusRing(painter, rect(), rect().height() / 2.0, copperBright());
}

} // namespace lumora
