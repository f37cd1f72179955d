// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/batch_list_view.h"

#include "ui/controls/figures.h"
#include "ui/controls/row_painting.h"
#include "ui/history/batch_list_model.h"
#include "ui/history/history_words.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr int designHeight = 46;
constexpr int sidePadding = 12;
constexpr int lineSpacing = 3;
constexpr int columnSpacing = 10;
constexpr int leastWidth = 170;

int widthOf(const QPainter& painter, const QString& text)
{
    return static_cast<int>(std::ceil(figuresWidth(QFontMetricsF(painter.font()), text)));
}

// What stands at both ends of one line, in the painter's font; the trailing text has its room first.
void paintEnds(QPainter& painter, const QStyleOptionViewItem& option, const QRect& line,
               const QString& leading, const QColor& leadingColour, const QString& trailing,
               const QColor& trailingColour)
{
    const auto place = [&](const QRect& part) { return QStyle::visualRect(option.direction, line, part); };
    const int taken = trailing.isEmpty() ? 0 : widthOf(painter, trailing) + columnSpacing;
    const QFont font = painter.font();
    painter.setPen(leadingColour);
    paintRowText(painter, option, place(line.adjusted(0, 0, -taken, 0)), leading, Qt::ElideRight);
    painter.setFont(font);
    painter.setPen(trailingColour);
    paintRowFigures(painter, option, line, trailing, RowEdge::trailing);
}

} // namespace

BatchListView::BatchListView(BatchListModel& batches, QWidget* parent)
    : HistoryRowsView(parent), m_batches(batches)
{
    setModel(&batches);
    setSelectionMode(SingleSelection);
    setAccessibleName(QStringLiteral("Batches"));
    setAccessibleDescription(QStringLiteral("Return goes to the files of the batch, Ctrl+U undoes it"));
}

int BatchListView::rowHeight() const
{
    return fonts::scaled(designHeight);
}

QSize BatchListView::minimumSizeHint() const
{
    return {fonts::scaled(leastWidth), rowHeight()};
}

std::int64_t BatchListView::chosenBatch() const
{
    const QModelIndex index = currentIndex();
    return index.isValid() && !m_batches.isDay(index) ? m_batches.summary(index).batch.id : 0;
}

// The first row is that of the newest day.
void BatchListView::choose(std::int64_t batch)
{
    const QModelIndex index = m_batches.rowOf(batch);
    setCurrentIndex(index.isValid() ? index : m_batches.index(1));
}

void BatchListView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    HistoryRowsView::currentChanged(current, previous);
    Q_EMIT chosen(chosenBatch());
}

// A day is passed over. The last row is that of a batch.
QModelIndex BatchListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const QModelIndex index = HistoryRowsView::moveCursor(action, modifiers);
    if (!index.isValid() || !m_batches.isDay(index)) return index;
    const bool upwards = action == MoveUp || action == MovePrevious || action == MovePageUp;
    return index.siblingAtRow(upwards && index.row() > 0 ? index.row() - 1 : index.row() + 1);
}

// With its day, where that is the row above.
void BatchListView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const QModelIndex above = index.siblingAtRow(index.row() - 1);
    if (hint == EnsureVisible && above.isValid() && m_batches.isDay(above))
        HistoryRowsView::scrollTo(above, hint);
    HistoryRowsView::scrollTo(index, hint);
}

void BatchListView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return Q_EMIT filesRequested();
    const bool isUndo = event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_U;
    if (!isUndo) return HistoryRowsView::keyPressEvent(event);
    if (m_canUndo && chosenBatch() != 0) Q_EMIT undoRequested(chosenBatch());
}

QMenu* BatchListView::makeContextMenu(const QModelIndex& index)
{
    if (m_batches.isDay(index)) return nullptr;
    const BatchSummary& summary = m_batches.summary(index);
    auto* menu = new QMenu(this);
    menu->addAction(QStringLiteral("Undo Batch"), this,
                    [this, batch = summary.batch.id] { Q_EMIT undoRequested(batch); })
        ->setEnabled(m_canUndo && summary.undone < summary.written);
    return menu;
}

void BatchListView::paintRow(QPainter& painter, const QModelIndex& index,
                             const QStyleOptionViewItem& option) const
{
    if (m_batches.isDay(index)) return paintDay(painter, index, option);
    paintRowGround(painter, option, index.row() == m_batches.rowCount() - 1);
    paintBatch(painter, index, option);
}

// On a darker band, which parts the days.
void BatchListView::paintDay(QPainter& painter, const QModelIndex& index,
                             const QStyleOptionViewItem& option) const
{
    using namespace TidewellTheme;
    const BatchRow& row = m_batches.row(index);
    const QRect line = option.rect.adjusted(sidePadding, 0, -sidePadding, 0);
    painter.fillRect(option.rect, withOpacity(leatherDeep(), 0.45));
    QFont font = fonts::font(TextStyle::caption, QFont::Bold);
    font.setCapitalization(QFont::AllUppercase);
    painter.setFont(font);
    painter.setPen(copperBright());
    const QString day = dayText(row.day);
    paintRowText(painter, option, line, day, Qt::ElideRight);
    const int left = line.width() - painter.fontMetrics().horizontalAdvance(day) - columnSpacing;
    painter.setFont(fonts::font(TextStyle::caption));
    painter.setPen(creamMuted());
    const QString saved = savedText(row.saved);
    const QString all = filesText(row.files) + QStringLiteral(", ") + saved;
    for (const QString& text : {all, saved}) {
        if (widthOf(painter, text) > left) continue;
        paintRowFigures(painter, option, line, text, RowEdge::trailing);
        break;
    }
    painter.fillRect(option.rect.adjusted(0, option.rect.height() - 1, 0, 0), withOpacity(cream(), 0.1));
}

void BatchListView::paintBatch(QPainter& painter, const QModelIndex& index,
                               const QStyleOptionViewItem& option) const
{
    using namespace TidewellTheme;
    const BatchSummary& summary = m_batches.summary(index);
    const int first = fonts::lineHeight(TextStyle::body);
    const int second = fonts::lineHeight(TextStyle::caption);
    const QRect area = option.rect.adjusted(sidePadding, 0, -sidePadding, 0);
    const int top = area.top() + (area.height() - first - lineSpacing - second) / 2;
    const QRect head(area.left(), top, area.width(), first);
    painter.setFont(fonts::font(TextStyle::body, QFont::DemiBold));
    const QString time = timeText(summary.batch.time);
    painter.setPen(cream());
    paintRowFigures(painter, option, head, time);
    const int timeWidth = widthOf(painter, time) + columnSpacing;
    painter.setFont(fonts::font(TextStyle::subheadline));
    const QString saved = savedText(summary.saved);
    QString files = filesText(summary.files);
    if (timeWidth + widthOf(painter, files) + columnSpacing + widthOf(painter, saved) > head.width())
        files.clear();
    paintEnds(painter, option, QStyle::visualRect(option.direction, head, head.adjusted(timeWidth, 0, 0, 0)),
              files, creamMuted(), saved, cream());
    painter.setFont(fonts::font(TextStyle::caption));
    const QString undone = summary.undone > 0 ? QStringLiteral("%1 undone").arg(summary.undone) : QString();
    paintEnds(painter, option, QRect(area.left(), top + first + lineSpacing, area.width(), second),
              QString::fromStdString(summary.batch.settings), creamSubtle(), undone, copperBright());
}

} // namespace lumora
