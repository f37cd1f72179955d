// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/controls/uniform_row_view.h"

#include <QHoverEvent>
#include <QScrollBar>

#include <algorithm>

namespace lumora {
namespace {

constexpr int wheelStepsOfARow = 3;

} // namespace

UniformRowView::UniformRowView(QWidget* parent) : QListView(parent)
{
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAttribute(Qt::WA_Hover);
}

QRect UniformRowView::visualRect(const QModelIndex& index) const
{
    if (!index.isValid()) return {};
    return {0, index.row() * rowHeight() - verticalOffset(), viewport()->width(), rowHeight()};
}

QModelIndex UniformRowView::indexAt(const QPoint& point) const
{
    if (!model()) return {}; // the base class asks while this object is still being built
    const int position = point.y() + verticalOffset();
    if (position < 0 || position / rowHeight() >= rowCount()) return {};
    return model()->index(position / rowHeight(), 0, rootIndex());
}

void UniformRowView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    if (!index.isValid()) return;
    const QRect row = visualRect(index);
    const int below = row.bottom() + 1 - viewport()->height();
    int distance = 0;
    if (hint == PositionAtTop || (hint == EnsureVisible && row.top() < 0)) {
        distance = row.top();
    } else if (hint == PositionAtBottom || (hint == EnsureVisible && below > 0)) {
        distance = below;
    } else if (hint == PositionAtCenter) {
        distance = row.center().y() - viewport()->height() / 2;
    }
    verticalScrollBar()->setValue(verticalOffset() + distance);
}

void UniformRowView::doItemsLayout()
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the parent's would lay out every row
    QAbstractItemView::doItemsLayout();
}

QStyleOptionViewItem UniformRowView::rowOption(const QModelIndex& index) const
{
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.rect = visualRect(index);
    option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
    option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
    option.state.setFlag(QStyle::State_MouseOver, m_pointer && option.rect.contains(*m_pointer));
    return option;
}

int UniformRowView::horizontalOffset() const
{
    return 0;
}

int UniformRowView::verticalOffset() const
{
    return verticalScrollBar()->value();
}

QModelIndex UniformRowView::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    if (rowCount() == 0) return {};
    const int page = std::max(1, viewport()->height() / rowHeight());
    // Without a current row every step leads to the first row that is in sight.
    int row = currentIndex().isValid() ? currentIndex().row() : verticalOffset() / rowHeight();
    if (currentIndex().isValid() || action == MoveHome || action == MoveEnd) {
        switch (action) {
        case MoveUp:
        case MovePrevious:
            row -= 1;
            break;
        case MoveDown:
        case MoveNext:
            row += 1;
            break;
        case MovePageUp:
            row -= page;
            break;
        case MovePageDown:
            row += page;
            break;
        case MoveHome:
            row = 0;
            break;
        case MoveEnd:
            row = rowCount() - 1;
            break;
        case MoveLeft:
        case MoveRight:
            break;
        }
    }
    return model()->index(std::clamp(row, 0, rowCount() - 1), 0, rootIndex());
}

void UniformRowView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command)
{
    // From where the selection began, which may be below where it ends.
    const QModelIndex first = indexAt(rect.normalized().topLeft());
    const QModelIndex last = indexAt(rect.normalized().bottomLeft());
    selectionModel()->select(
        first.isValid() && last.isValid() ? QItemSelection(first, last) : QItemSelection(), command);
}

QRegion UniformRowView::visualRegionForSelection(const QItemSelection& selection) const
{
    QRegion region;
    for (const QItemSelectionRange& range : selection)
        region += visualRect(range.topLeft()).united(visualRect(range.bottomRight()));
    return region & viewport()->rect();
}

void UniformRowView::rowsInserted(const QModelIndex&, int first, int last)
{
    const int scrolled = verticalOffset();
    updateGeometries();
    const bool above = first * rowHeight() < scrolled;
    if (above) verticalScrollBar()->setValue(scrolled + (last - first + 1) * rowHeight());
    viewport()->update();
}

void UniformRowView::updateGeometries()
{
    const int hidden = rowCount() * rowHeight() - viewport()->height();
    verticalScrollBar()->setSingleStep(rowHeight() / wheelStepsOfARow);
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setRange(0, std::max(0, hidden));
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the parent's would lay out every row
    QAbstractItemView::updateGeometries();
}

void UniformRowView::scrollContentsBy(int, int)
{
    viewport()->update();
}

bool UniformRowView::viewportEvent(QEvent* event)
{
    switch (event->type()) {
    case QEvent::HoverEnter:
    case QEvent::HoverMove:
        m_pointer = static_cast<QHoverEvent*>(event)->position().toPoint();
        viewport()->update();
        break;
    case QEvent::HoverLeave:
    case QEvent::Leave:
        m_pointer.reset();
        viewport()->update();
        break;
    default:
        break;
    }
    return QListView::viewportEvent(event);
}

void UniformRowView::forEachRowIn(const QRect& area,
                                  const std::function<void(const QModelIndex&)>& visit) const
{
    QModelIndex index = indexAt(area.topLeft());
    while (index.isValid() && visualRect(index).top() <= area.bottom()) {
        visit(index);
        index = index.siblingAtRow(index.row() + 1);
    }
}

void UniformRowView::resizeEvent(QResizeEvent* event)
{
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the parent's would lay out every row
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

int UniformRowView::rowCount() const
{
    return model() ? model()->rowCount(rootIndex()) : 0;
}

} // namespace lumora
