// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The scrolling rows of the results list and what can be done with one: show its output in the file browser
// by the button or by Return, compare it with its original by a double click or by Space, open it, take it
// back, try a failed file again, copy its path or message, drag it out as a file.
#pragma once

#include "ui/controls/uniform_row_view.h"
#include "ui/results/file_browser.h"

#include <QPersistentModelIndex>

class QMenu;

namespace lumora {

class ResultsListModel;

class ResultsListView : public UniformRowView
{
    Q_OBJECT

public:
    // The model must outlive the view.
    ResultsListView(ResultsListModel& results, FileBrowser fileBrowser, QWidget* parent = nullptr);

    int rowHeight() const override;
    // One height per result, up to eight; those that a filter hides leave their room.
    int listHeight() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // The menu of a row; what the row has nothing for is disabled. Owned by the view.
    QMenu* makeContextMenu(const QModelIndex& index);
    // Where the row's "Show in Finder" button is in the viewport; empty where it has none.
    QRect revealButton(const QModelIndex& index) const;

Q_SIGNALS:
    // Only of rows with an output.
    void compareRequested(const QModelIndex& index);

protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;

private:
    QModelIndex rowForKeys() const;
    QModelIndex revealButtonAt(const QPoint& point) const;
    void showInFolder(const QModelIndex& index) const;
    void compare(const QModelIndex& index);

    ResultsListModel& m_results;
    const FileBrowser m_fileBrowser;
    QPersistentModelIndex m_pressedButton;
};

} // namespace lumora
