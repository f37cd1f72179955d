// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The batches of the history as rows under rows of their days. Main thread.
#pragma once

#include "ui/history/batch_rows.h"

#include <QAbstractListModel>

#include <memory>
#include <vector>

namespace lumora {

class BatchListModel : public QAbstractListModel
{
    Q_OBJECT

public:
    using Batches = std::shared_ptr<const std::vector<DatedBatch>>;

    using QAbstractListModel::QAbstractListModel;

    void show(Batches batches, HistoryFilter filter);

    const BatchRow& row(const QModelIndex& index) const;
    bool isDay(const QModelIndex& index) const { return !row(index).batch; }
    // Of a row that is none of a day.
    const BatchSummary& summary(const QModelIndex& index) const;
    // Invalid when the batch is not listed.
    QModelIndex rowOf(std::int64_t batch) const;
    // Whatever the filter; absent when it is forgotten.
    const DatedBatch* find(std::int64_t batch) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    // Days cannot be chosen.
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    Batches m_batches = std::make_shared<std::vector<DatedBatch>>();
    std::vector<BatchRow> m_rows;
    std::vector<std::size_t> m_byNumber; // places of the batches, in the order of their numbers
};

} // namespace lumora
