// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/result_sequence.h"

#include "ui/results/comparable_results.h"

namespace lumora {

void ResultSequence::begin(ComparableResults& results, const QModelIndex& index)
{
    if (m_results != &results) follow(results);
    goTo(index);
}

void ResultSequence::follow(ComparableResults& results)
{
    if (m_results) m_results->disconnect(this);
    m_results = &results;
    connect(&results, &QAbstractItemModel::rowsInserted, this, &ResultSequence::neighboursChanged);
    connect(&results, &QAbstractItemModel::modelReset, this, &ResultSequence::findAgain);
    connect(&results, &QAbstractItemModel::dataChanged, this, &ResultSequence::take);
    connect(&results, &QObject::destroyed, this, &ResultSequence::neighboursChanged);
}

void ResultSequence::goTo(const QModelIndex& index)
{
    m_row = index;
    m_isAwaited = true;
    take();
    Q_EMIT neighboursChanged();
}

void ResultSequence::take()
{
    if (!m_isAwaited || !m_row.isValid()) return;
    std::optional<ProcessingResult> result = m_results->comparedResult(m_row);
    if (!result) return;
    m_isAwaited = false;
    m_current = std::move(result);
    Q_EMIT currentChanged();
}

void ResultSequence::step(int direction)
{
    if (const QModelIndex row = neighbour(direction); row.isValid()) goTo(row);
}

QModelIndex ResultSequence::neighbour(int direction) const
{
    if (!m_results || !m_row.isValid()) return {};
    for (int row = m_row.row() + direction; row >= 0 && row < m_results->rowCount(); row += direction) {
        const QModelIndex index = m_results->index(row);
        if (m_results->isComparable(index)) return index;
    }
    return {};
}

void ResultSequence::findAgain()
{
    m_row = m_current ? m_results->rowOf(m_current->id) : QModelIndex();
    m_isAwaited = false;
    Q_EMIT neighboursChanged();
}

} // namespace lumora
