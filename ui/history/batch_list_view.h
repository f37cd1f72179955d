// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The batches of the history under their days. The arrow keys go from batch to batch, Return goes to its
// files.
#pragma once

#include "ui/history/history_rows_view.h"

#include <cstdint>

namespace lumora {

class BatchListModel;

class BatchListView : public HistoryRowsView
{
    Q_OBJECT

public:
    // The model must outlive the view.
    explicit BatchListView(BatchListModel& batches, QWidget* parent = nullptr);

    int rowHeight() const override;
    QSize minimumSizeHint() const override;
    // 0 while there is none.
    std::int64_t chosenBatch() const;
    // The newest one where it is not listed.
    void choose(std::int64_t batch);
    // Without this the menu's entry is disabled.
    void setCanUndo(bool canUndo) { m_canUndo = canUndo; }

    QMenu* makeContextMenu(const QModelIndex& index) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

Q_SIGNALS:
    void chosen(std::int64_t batch);
    void filesRequested();
    void undoRequested(std::int64_t batch);

protected:
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintRow(QPainter& painter, const QModelIndex& index,
                  const QStyleOptionViewItem& option) const override;

private:
    void paintDay(QPainter& painter, const QModelIndex& index, const QStyleOptionViewItem& option) const;
    void paintBatch(QPainter& painter, const QModelIndex& index, const QStyleOptionViewItem& option) const;

    BatchListModel& m_batches;
    bool m_canUndo = false;
};

} // namespace lumora
