// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What was done, from the history: batches by day, the files of the chosen one with what has become of them,
// a search over all, what was saved by week. Reads off the main thread and shows what is there so far. Main
// thread.
#pragma once

#include "ui/history/history_actions.h"

#include <QWidget>

#include <cstdint>
#include <memory>
#include <vector>

class QStackedLayout;

namespace lumora {

class BatchListModel;
class BatchListView;
class ChipButton;
class ComparableResults;
class ElidedLabel;
class FileControls;
class History;
class HistoryFilesModel;
class HistoryFilesView;
class HistoryHeading;
class HistoryNotice;
class HistoryReader;
class HistorySearch;
class StyledLabel;
class WeeksChart;
struct FoundFile;
struct HistoryOverview;

class HistoryView : public QWidget
{
    Q_OBJECT

public:
    HistoryView(std::shared_ptr<History> history, HistoryActions actions, QWidget* parent = nullptr);
    // Waits for the question that is being answered.
    ~HistoryView() override;

    QSize sizeHint() const override { return {940, 680}; }

public Q_SLOTS:
    // Reads anew: a batch or an undo has ended. What is chosen stays chosen.
    void refresh();
    // Nothing can be undone while files are in work.
    void setCanUndo(bool canUndo);

Q_SIGNALS:
    // The batches were read, or could not be.
    void refreshed();
    void compareRequested(lumora::ComparableResults& files, const QModelIndex& index);
    void closeRequested();

protected:
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void lay();
    void connectParts();
    QWidget* makeHeader();
    QWidget* makeContent();
    QWidget* makeFilesPane();

    void take(const std::shared_ptr<const HistoryOverview>& overview);
    void showBatches();
    void showFiles();
    void describeFiles();
    bool isSearching() const;
    QString whenOf(const FoundFile& file) const;

    const HistoryActions m_actions;
    std::unique_ptr<HistoryReader> m_reader;
    bool m_canUndo = true;
    bool m_isReading = false;
    bool m_readsAgain = false;
    std::shared_ptr<const HistoryOverview> m_overview; // null before it is read
    BatchListModel* m_batches;
    HistoryFilesModel* m_files;

    QStackedLayout* m_pages = nullptr;
    StyledLabel* m_totals = nullptr;
    HistoryNotice* m_notice;
    ElidedLabel* m_trouble; // with the history itself
    WeeksChart* m_chart;
    HistorySearch* m_search;
    BatchListView* m_batchList;
    ChipButton* m_undoBatch;
    HistoryHeading* m_heading;
    HistoryFilesView* m_fileList;
    FileControls* m_controls;
};

} // namespace lumora
