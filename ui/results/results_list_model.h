// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The results of a processing model as rows, newest first. Holds no copy of them: a new result is one
// inserted row, whatever the length. Main thread.
#pragma once

#include <QAbstractListModel>

namespace lumora {

class ProcessingModel;
struct ProcessingResult;

class ResultsListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum class Outcome { success, failure, skip };

    enum Role {
        MessageRole = Qt::UserRole, // QString, lines as they came
        IsSuccessRole,              // bool
        OutcomeRole,                // Outcome, as an int
        HasOutputRole,              // bool
        MetricsTextRole,            // QString, the line of sizes
    };

    // The processing model must outlive this one.
    explicit ResultsListModel(const ProcessingModel& processing, QObject* parent = nullptr);

    // The record itself, for its byte paths; valid until the next result arrives.
    const ProcessingResult& result(const QModelIndex& index) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    // A row with an output can be dragged out as that file.
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

private:
    void insertNewest();

    const ProcessingModel& m_processing;
    int m_rowCount;
};

} // namespace lumora
