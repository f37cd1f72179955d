// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The outcome of the files so far: totals, and what can be done with the list, above up to eight rows, beyond
// which the rows scroll. Hidden while there is no result.
#pragma once

#include "ui/results/file_browser.h"

#include <QModelIndex>
#include <QWidget>

namespace lumora {

class ComparableResults;
class ProcessingModel;
class ResultsListModel;
class ResultsListView;
class ResultsSummary;

class ResultsList : public QWidget
{
    Q_OBJECT

public:
    // The model must outlive the list.
    ResultsList(ProcessingModel& processing, FileBrowser fileBrowser, QWidget* parent = nullptr);

    // The totals and one row.
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void compareRequested(lumora::ComparableResults& results, const QModelIndex& index);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();

    const ProcessingModel& m_processing;
    ResultsListModel* m_model;
    ResultsSummary* m_summary;
    ResultsListView* m_view;
};

} // namespace lumora
