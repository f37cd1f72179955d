// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/result_sequence.h"

#include "ui/results/results_list_model.h"

namespace lumora {

ResultSequence::ResultSequence(ResultsListModel& results, QObject* parent)
    : QObject(parent), m_results(results)
{
    connect(&results, &QAbstractItemModel::rowsInserted, this, &ResultSequence::neighboursChanged);
    connect(&results, &QAbstractItemModel::modelReset, this, &ResultSequence::findAgain);
}

void ResultSequence::begin(const QModelIndex& index)
{
    m_row = index;
    m_current = m_results.result(index);
    Q_EMIT currentChanged();
    Q_EMIT neighboursChanged();
}

void ResultSequence::step(int direction)
{
    if (const QModelIndex row = neighbour(direction); row.isValid()) begin(row);
}

QModelIndex ResultSequence::neighbour(int direction) const
{
    if (!m_row.isValid()) return {};
    for (int row = m_row.row() + direction; row >= 0 && row < m_results.rowCount(); row += direction) {
        const QModelIndex index = m_results.index(row);
        if (m_results.result(index).outputURL) return index;
    }
    return {};
}

void ResultSequence::findAgain()
{
    m_row = QPersistentModelIndex();
    for (int row = 0; m_current && row < m_results.rowCount() && !m_row.isValid(); ++row) {
        const QModelIndex index = m_results.index(row);
        if (m_results.result(index).id == m_current->id) m_row = index;
    }
    Q_EMIT neighboursChanged();
}

} // namespace lumora
