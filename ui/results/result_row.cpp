// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/result_row.h"

#include "ui/controls/row_painting.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr int designHeight = 58;
constexpr int sidePadding = 10;
constexpr int lineSpacing = 2;
constexpr int columnSpacing = 8;
constexpr int buttonSide = 28;
constexpr double symbolSize = 13;

int buttonExtent()
{
    return fonts::scaled(buttonSide);
}

using Outcome = ResultsListModel::Outcome;

} // namespace

Symbol outcomeSymbol(Outcome outcome)
{
    switch (outcome) {
    case Outcome::success:
        return {QStringLiteral("checkmark.circle.fill"), symbolSize};
    case Outcome::skip:
        return {QStringLiteral("minus.circle.fill"), symbolSize};
    case Outcome::failure:
        break;
    }
    return {QStringLiteral("exclamationmark.triangle.fill"), symbolSize};
}

QColor outcomeColour(Outcome outcome)
{
    if (outcome == Outcome::success) return TidewellTheme::sage();
    return outcome == Outcome::skip ? TidewellTheme::creamSubtle() : TidewellTheme::copperBright();
}

int ResultRow::height()
{
    return fonts::scaled(designHeight);
}

ResultRow::ResultRow(const QModelIndex& index, const QStyleOptionViewItem& option)
    : m_option(option), m_name(index.data().toString()),
      m_message(index.data(ResultsListModel::MessageRole).toString().simplified()),
      m_outcome(static_cast<Outcome>(index.data(ResultsListModel::OutcomeRole).toInt())),
      m_isSuccess(index.data(ResultsListModel::IsSuccessRole).toBool()),
      m_hasOutput(index.data(ResultsListModel::HasOutputRole).toBool()),
      m_isLast(index.row() == index.model()->rowCount() - 1)
{
    if (m_isSuccess) m_metricsText = index.data(ResultsListModel::MetricsTextRole).toString();
}

QRect ResultRow::mirrored(const QRect& area) const
{
    return QStyle::visualRect(m_option.direction, m_option.rect, area);
}

QRect ResultRow::revealButton() const
{
    if (!m_hasOutput) return {};
    const int side = buttonExtent();
    const QRect& row = m_option.rect;
    return mirrored(
        {row.right() + 1 - sidePadding - side, row.top() + (row.height() - side) / 2, side, side});
}

QRect ResultRow::textColumn() const
{
    const int leading = sidePadding + outcomeSymbol(m_outcome).extent() + columnSpacing;
    const int trailing = sidePadding + (m_hasOutput ? buttonExtent() + columnSpacing : 0);
    return m_option.rect.adjusted(leading, 0, -trailing, 0);
}

void ResultRow::paint(QPainter& painter, bool revealHovered) const
{
    paintRowGround(painter, m_option, m_isLast);
    const Symbol status = outcomeSymbol(m_outcome);
    const QRect icon(m_option.rect.left() + sidePadding, m_option.rect.top(), status.extent(),
                     m_option.rect.height());
    status.paint(painter, mirrored(icon), outcomeColour(m_outcome));
    paintTexts(painter);
    if (!m_hasOutput) return;
    if (revealHovered)
        paintRounded(painter, revealButton(), 6, TidewellTheme::withOpacity(TidewellTheme::cream(), 0.12),
                     Qt::transparent);
    Symbol{QStringLiteral("magnifyingglass"), symbolSize}.paint(
        painter, revealButton(), revealHovered ? TidewellTheme::cream() : TidewellTheme::copperBright());
}

void ResultRow::paintTexts(QPainter& painter) const
{
    const QRect column = textColumn();
    int height = fonts::lineHeight(TextStyle::body) + lineSpacing + fonts::lineHeight(TextStyle::caption);
    if (m_isSuccess) height += lineSpacing + fonts::lineHeight(TextStyle::caption2);
    int top = column.top() + (column.height() - height) / 2;
    const auto nextLine = [&](TextStyle style) {
        const QRect line(column.left(), top, column.width(), fonts::lineHeight(style));
        top += line.height() + lineSpacing;
        painter.setFont(fonts::font(style));
        return mirrored(line);
    };
    painter.setPen(TidewellTheme::cream());
    paintRowText(painter, m_option, nextLine(TextStyle::body), m_name, Qt::ElideMiddle);
    painter.setPen(TidewellTheme::creamMuted());
    paintRowText(painter, m_option, nextLine(TextStyle::caption), m_message, Qt::ElideRight);
    if (!m_isSuccess) return;
    painter.setPen(TidewellTheme::creamSubtle());
    paintRowFigures(painter, m_option, nextLine(TextStyle::caption2), m_metricsText);
}

} // namespace lumora
