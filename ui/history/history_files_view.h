// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files of the history and what can be done with them: show one in its folder by Return, compare it by Space
// or a double click, undo those that are chosen by Ctrl+U, copy a path. The menu has the same.
#pragma once

#include "ui/history/history_rows_view.h"
#include "ui/results/file_browser.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lumora {

class HistoryFilesModel;

struct FoundFile;

class HistoryFilesView : public HistoryRowsView
{
    Q_OBJECT

public:
    // When a file's batch was, in words; empty where that need not be said.
    using When = std::function<QString(const FoundFile&)>;

    // The model must outlive the view.
    HistoryFilesView(HistoryFilesModel& files, FileBrowser fileBrowser, When when, QWidget* parent = nullptr);

    int rowHeight() const override;
    void setCanUndo(bool canUndo);

    bool canShowInFolder() const;
    bool canCompare() const;
    // Whether any that is chosen can be.
    bool canUndo() const;
    void showInFolder();
    void compare();
    void undo();

    QMenu* makeContextMenu(const QModelIndex& index) override;

Q_SIGNALS:
    // What can be done may be something else now.
    void actionsChanged();
    void compareRequested(const QModelIndex& index);
    void undoRequested(const std::vector<std::int64_t>& files);

protected:
    void paintRow(QPainter& painter, const QModelIndex& index,
                  const QStyleOptionViewItem& option) const override;
    void rowsPainted(int first, int last) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void copyPath();

    HistoryFilesModel& m_files;
    const FileBrowser m_fileBrowser;
    const When m_when;
    bool m_canUndo = false;
};

} // namespace lumora
