// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_file_row.h"

#include "ui/controls/path_text.h"
#include "ui/controls/row_painting.h"
#include "ui/history/file_texts.h"
#include "ui/results/result_row.h"
#include "ui/theme/fonts.h"
#include "ui/theme/symbols.h"
#include "ui/theme/tidewell_theme.h"

#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr int sidePadding = 12;
constexpr int lineSpacing = 2;
constexpr int columnSpacing = 8;
constexpr int placesWidth = 128;
// With less, what became of the files goes below their names.
constexpr int leastWidthForPlaces = 400;

Symbol symbolOf(const FileRecord& file)
{
    if (file.isUndone) return {QStringLiteral("arrow.counterclockwise"), 13};
    return outcomeSymbol(ResultsListModel::outcome(resultOf(file)));
}

// What is so of both files is said once.
QString inOneLine(const HistoryFileRow& row)
{
    QStringList texts = row.placeTexts();
    if (row.places && !row.file.isUndone && row.places->output == row.places->original) {
        texts.removeFirst();
        texts[0] = QStringLiteral("Both files ") + placeText(row.places->original);
    }
    for (qsizetype i = 1; i < texts.size(); ++i)
        texts[i][0] = texts[i][0].toLower();
    return texts.join(QStringLiteral(", "));
}

QColor colourOf(const FileRecord& file)
{
    if (file.isUndone) return TidewellTheme::creamSubtle();
    return outcomeColour(ResultsListModel::outcome(resultOf(file)));
}

} // namespace

int HistoryFileRow::height()
{
    return ResultRow::height();
}

QStringList HistoryFileRow::placeTexts() const
{
    QStringList texts;
    if (places && (file.isUndone || places->output)) texts << outputPlaceText(file, *places);
    if (places) texts << originalPlaceText(*places);
    if (!when.isEmpty()) texts << when;
    return texts;
}

void HistoryFileRow::paintSymbol(QPainter& painter, const QStyleOptionViewItem& option) const
{
    const Symbol symbol = symbolOf(file);
    const QRect place(option.rect.left() + sidePadding, option.rect.top(), symbol.extent(),
                      option.rect.height());
    symbol.paint(painter, QStyle::visualRect(option.direction, option.rect, place), colourOf(file));
}

void HistoryFileRow::paint(QPainter& painter, const QStyleOptionViewItem& option) const
{
    paintSymbol(painter, option);
    const bool hasColumn = option.rect.width() >= fonts::scaled(leastWidthForPlaces);
    const int leading = sidePadding + symbolOf(file).extent() + columnSpacing;
    const int column = hasColumn ? fonts::scaled(placesWidth) : 0;
    const int trailing = sidePadding + (hasColumn ? column + columnSpacing : 0);
    paintTexts(painter, option, option.rect.adjusted(leading, 0, -trailing, 0),
               hasColumn ? sizesOf(file) : inOneLine(*this));
    if (!hasColumn) return;
    const QRect end(option.rect.right() + 1 - sidePadding - column, option.rect.top(), column,
                    option.rect.height());
    paintPlaces(painter, option, end);
}

void HistoryFileRow::paintTexts(QPainter& painter, const QStyleOptionViewItem& option, const QRect& area,
                                const QString& lastLine) const
{
    using namespace TidewellTheme;
    const bool hasThree = file.output || !lastLine.isEmpty();
    int height = fonts::lineHeight(TextStyle::body) + lineSpacing + fonts::lineHeight(TextStyle::caption);
    if (hasThree) height += lineSpacing + fonts::lineHeight(TextStyle::caption2);
    int top = area.top() + (area.height() - height) / 2;
    const auto nextLine = [&](TextStyle style, const QColor& colour) {
        const QRect line(area.left(), top, area.width(), fonts::lineHeight(style));
        top += line.height() + lineSpacing;
        painter.setFont(fonts::font(style));
        painter.setPen(colour);
        return QStyle::visualRect(option.direction, option.rect, line);
    };
    paintRowText(painter, option, nextLine(TextStyle::body, cream()), fileNameText(file.source),
                 Qt::ElideMiddle);
    paintRowText(painter, option, nextLine(TextStyle::caption, creamMuted()), messageOf(file),
                 Qt::ElideRight);
    paintRowFigures(painter, option, nextLine(TextStyle::caption2, creamSubtle()), lastLine);
}

void HistoryFileRow::paintPlaces(QPainter& painter, const QStyleOptionViewItem& option,
                                 const QRect& area) const
{
    const QStringList lines = placeTexts();
    const int step = fonts::lineHeight(TextStyle::caption) + lineSpacing;
    int top = area.top() + (area.height() - static_cast<int>(lines.size()) * step) / 2;
    painter.setPen(TidewellTheme::creamMuted());
    for (const QString& text : lines) {
        const QRect line(area.left(), top, area.width(), step);
        top += step;
        painter.setFont(fonts::font(TextStyle::caption));
        paintRowText(painter, option, QStyle::visualRect(option.direction, option.rect, line), text,
                     Qt::ElideRight, RowEdge::trailing);
    }
}

} // namespace lumora
