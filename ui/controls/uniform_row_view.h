// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A list whose rows have one height. QListView lays out all its items again for every inserted row; here the
// places are computed, so that inserting a row and painting a page cost the same at any length. The base
// class stays for what it knows of selection, dragging and accessibility. Rows shown stay where they are when
// a row is inserted above them, except at the very top, where the newest shows itself.
#pragma once

#include <QListView>

#include <functional>
#include <optional>

namespace lumora {

class UniformRowView : public QListView
{
    Q_OBJECT

public:
    explicit UniformRowView(QWidget* parent = nullptr);

    // Pixels of one row; the list may hold as many rows as fit 2^31 pixels.
    // At least 1. Asked by the base class while this object is still being built, hence not pure.
    virtual int rowHeight() const { return 1; }

    QRect visualRect(const QModelIndex& index) const override;
    QModelIndex indexAt(const QPoint& point) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    void doItemsLayout() override;

protected:
    // Where the pointer is over the viewport, if it is; hovering follows it through scrolling.
    std::optional<QPoint> pointer() const { return m_pointer; }
    // The options of one row: its place, and whether it is selected, current with the focus, or hovered over.
    QStyleOptionViewItem rowOption(const QModelIndex& index) const;
    // The rows that meet an area of the viewport, from the top.
    void forEachRowIn(const QRect& area, const std::function<void(const QModelIndex&)>& visit) const;

    int horizontalOffset() const override;
    int verticalOffset() const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void rowsInserted(const QModelIndex& parent, int first, int last) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override = 0;
    void resizeEvent(QResizeEvent* event) override;

private:
    int rowCount() const;

    std::optional<QPoint> m_pointer;
};

} // namespace lumora
