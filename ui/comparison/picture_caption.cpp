// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/picture_caption.h"

#include "ui/controls/tool_tip.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QEvent>
#include <QPainter>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr int lineSpacing = 3;

QFont roleFont()
{
    QFont font = fonts::font(TextStyle::caption2, QFont::Bold);
    font.setCapitalization(QFont::AllUppercase);
    return font;
}

} // namespace

PictureCaption::PictureCaption(const QString& role, Edge edge, QWidget* parent)
    : QWidget(parent), m_role(role), m_edge(edge)
{
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    display({}, {});
}

void PictureCaption::display(const QString& name, const QStringList& facts)
{
    m_name = name;
    m_facts = facts;
    const QStringList lines = QStringList(name) + facts;
    setAccessibleName(QStringLiteral("%1: %2").arg(m_role, lines.join(QStringLiteral(", "))));
    setToolTip(toolTipOf(lines));
    update();
}

QSize PictureCaption::sizeHint() const
{
    return {200, fonts::lineHeight(TextStyle::caption2) + fonts::lineHeight(TextStyle::body) +
                     fonts::lineHeight(TextStyle::caption) + 2 * lineSpacing};
}

bool PictureCaption::event(QEvent* event)
{
    if (event->type() == QEvent::ApplicationFontChange) updateGeometry();
    return QWidget::event(event);
}

void PictureCaption::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const bool atRight = (m_edge == Edge::trailing) != isRightToLeft();
    const auto place =
        static_cast<int>((atRight ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignAbsolute | Qt::AlignVCenter);
    int top = 0;
    const auto paintLine = [&](TextStyle style, const QFont& font, const QColor& colour, const QString& text,
                               Qt::TextElideMode mode) {
        const QRect line(0, top, width(), fonts::lineHeight(style));
        top += line.height() + lineSpacing;
        painter.setFont(fonts::shapedFor(text, font));
        painter.setPen(colour);
        painter.drawText(line, place | Qt::TextDontClip | Qt::TextSingleLine,
                         painter.fontMetrics().elidedText(text, mode, line.width()));
    };
    using namespace TidewellTheme;
    paintLine(TextStyle::caption2, roleFont(), copperBright(), m_role, Qt::ElideRight);
    paintLine(TextStyle::body, fonts::font(TextStyle::body, QFont::DemiBold), cream(), m_name,
              Qt::ElideMiddle);
    paintLine(TextStyle::caption, fonts::font(TextStyle::caption), creamMuted(), factsText(), Qt::ElideRight);
}

} // namespace lumora
