// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/batch_list_model.h"

#include "ui/controls/tool_tip.h"
#include "ui/history/history_words.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace lumora {
namespace {

QString spokenRow(const BatchRow& row, const BatchSummary* summary)
{
    QStringList texts{dayText(row.day)};
    if (summary) texts.first() += u' ' + timeText(summary->batch.time);
    texts << filesText(row.files) << savedText(row.saved);
    if (summary && summary->undone > 0) texts << QStringLiteral("%1 undone").arg(summary->undone);
    return texts.join(QStringLiteral(", "));
}

} // namespace

void BatchListModel::show(Batches batches, HistoryFilter filter)
{
    beginResetModel();
    m_batches = std::move(batches);
    m_rows = batchRows(*m_batches, filter);
    m_byNumber.resize(m_batches->size());
    std::iota(m_byNumber.begin(), m_byNumber.end(), std::size_t{0});
    std::ranges::sort(m_byNumber, {},
                      [this](std::size_t place) { return (*m_batches)[place].summary.batch.id; });
    endResetModel();
}

const BatchRow& BatchListModel::row(const QModelIndex& index) const
{
    return m_rows.at(static_cast<std::size_t>(index.row()));
}

const BatchSummary& BatchListModel::summary(const QModelIndex& index) const
{
    return m_batches->at(row(index).batch.value()).summary;
}

QModelIndex BatchListModel::rowOf(std::int64_t batch) const
{
    const auto found = std::ranges::find_if(m_rows, [&](const BatchRow& row) {
        return row.batch && (*m_batches)[*row.batch].summary.batch.id == batch;
    });
    return found == m_rows.end() ? QModelIndex() : index(static_cast<int>(found - m_rows.begin()));
}

const DatedBatch* BatchListModel::find(std::int64_t batch) const
{
    const auto idAt = [this](std::size_t place) { return (*m_batches)[place].summary.batch.id; };
    const auto found = std::ranges::lower_bound(m_byNumber, batch, {}, idAt);
    return found != m_byNumber.end() && idAt(*found) == batch ? &(*m_batches)[*found] : nullptr;
}

int BatchListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant BatchListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const BatchSummary* batch = isDay(index) ? nullptr : &summary(index);
    switch (role) {
    case Qt::DisplayRole:
        return batch ? timeText(batch->batch.time) : dayText(row(index).day);
    case Qt::AccessibleTextRole:
        return spokenRow(row(index), batch);
    case Qt::AccessibleDescriptionRole:
        return batch ? settingsText(batch->batch) : QString();
    case Qt::ToolTipRole:
        return batch ? toolTipOf({spokenRow(row(index), batch), settingsText(batch->batch)}) : QString();
    default:
        return {};
    }
}

Qt::ItemFlags BatchListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid() || isDay(index)) return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

} // namespace lumora
