// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The results of a processing model as rows: newest first, or arranged otherwise. Holds no copy of them: a
// new result is one inserted row, whatever the length. Main thread.
#pragma once

#include "ui/results/comparable_results.h"
#include "ui/results/results_arrangement.h"

namespace lumora {

class ProcessingModel;

class ResultsListModel : public ComparableResults
{
    Q_OBJECT

public:
    enum class Outcome { success, failure, skip };
    static Outcome outcome(const ProcessingResult& result);

    enum Role {
        MessageRole = Qt::UserRole, // QString, lines as they came
        IsSuccessRole,              // bool
        OutcomeRole,                // Outcome, as an int
        HasOutputRole,              // bool
        MetricsTextRole,            // QString, the line of sizes
    };

    // The processing model must outlive this one.
    explicit ResultsListModel(ProcessingModel& processing, QObject* parent = nullptr);

    // All rows anew; the view begins at its top.
    void arrange(ResultsOrder order, bool failuresOnly);
    ResultsOrder order() const { return m_arrangement.order(); }
    bool showsFailuresOnly() const { return m_arrangement.showsFailuresOnly(); }
    int failureCount() const { return m_failureCount; }
    int resultCount() const; // with those that are not shown

    // What the processing model does with its results.
    void retry(const QModelIndex& index);
    void retryFailed();
    void undo(const QModelIndex& index);
    bool canUndo(const QModelIndex& index) const;
    void clear();

    // The record itself, for its byte paths; valid until the next result arrives.
    const ProcessingResult& result(const QModelIndex& index) const;

    bool isComparable(const QModelIndex& index) const override;
    std::optional<ProcessingResult> comparedResult(const QModelIndex& index) override;
    QModelIndex rowOf(const Uuid& result) const override;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    // A row with an output can be dragged out as that file.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

Q_SIGNALS:
    void failureCountChanged();

private:
    void insertNewest();
    void readChanged();
    void readAll();
    void setFailureCount(int count);

    ProcessingModel& m_processing;
    ResultsArrangement m_arrangement;
    int m_failureCount = 0;
};

} // namespace lumora
