// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_rows_view.h"

#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QPainterPath>

namespace lumora {
namespace {

constexpr double cornerRadius = 8;
constexpr int placeholderMargin = 16;

} // namespace

HistoryRowsView::HistoryRowsView(QWidget* parent) : UniformRowView(parent)
{
    setFrameShape(QFrame::NoFrame);
    setAutoFillBackground(false);
    viewport()->setAutoFillBackground(false);
    setEditTriggers(NoEditTriggers);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void HistoryRowsView::setPlaceholder(const QString& text)
{
    m_placeholder = text;
    viewport()->update();
}

QSize HistoryRowsView::minimumSizeHint() const
{
    return {fonts::scaled(120), rowHeight()};
}

void HistoryRowsView::rowsPainted(int, int) {}

// The card reaches behind the scroll bar.
bool HistoryRowsView::event(QEvent* event)
{
    if (event->type() != QEvent::Paint) return UniformRowView::event(event);
    QPainter painter(this);
    paintRounded(painter, rect(), cornerRadius,
                 TidewellTheme::withOpacity(TidewellTheme::leatherRaised(), 0.82),
                 TidewellTheme::withOpacity(TidewellTheme::cream(), 0.16));
    return true;
}

// Inside the card's outline, so that no highlight covers it.
void HistoryRowsView::paintEvent(QPaintEvent* event)
{
    QPainter painter(viewport());
    QPainterPath card;
    card.addRoundedRect(QRectF(rect()).translated(-viewport()->pos()).adjusted(1, 1, -1, -1),
                        cornerRadius - 1, cornerRadius - 1);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipPath(card);
    forEachRowIn(event->rect(),
                 [&](const QModelIndex& index) { paintRow(painter, index, rowOption(index)); });
    if (model()->rowCount() > 0) {
        const QModelIndex last = indexAt(QPoint(0, viewport()->height() - 1));
        return rowsPainted(indexAt(QPoint(0, 0)).row(),
                           last.isValid() ? last.row() : model()->rowCount() - 1);
    }
    painter.setFont(fonts::font(fonts::TextStyle::body));
    painter.setPen(TidewellTheme::creamMuted());
    painter.drawText(viewport()->rect().adjusted(placeholderMargin, 0, -placeholderMargin, 0),
                     static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap, m_placeholder);
}

void HistoryRowsView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKeyboard = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKeyboard ? currentIndex() : indexAt(event->pos());
    QMenu* menu = index.isValid() ? makeContextMenu(index) : nullptr;
    if (!menu) return;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(byKeyboard ? viewport()->mapToGlobal(visualRect(index).center()) : event->globalPos());
}

} // namespace lumora
