// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_list_model.h"

#include "model/batch_outcome.h"
#include "model/processing_model.h"
#include "model/result_text.h"
#include "records/processing_result.h"
#include "system/file_uris.h"
#include "ui/controls/path_text.h"
#include "ui/controls/tool_tip.h"

#include <QLocale>
#include <QMimeData>

#include <utility>

namespace lumora {
namespace {

constexpr QLatin1String uriListType("text/uri-list");

QString metricsLine(const ProcessingResult& result)
{
    return metricsText(result, QLocale());
}

QString toolTip(const ProcessingResult& result)
{
    QStringList lines{pathText(result.sourceURL)};
    if (result.outputURL && *result.outputURL != result.sourceURL) lines << pathText(*result.outputURL);
    lines << QString::fromStdString(result.message);
    return toolTipOf(lines);
}

// What the icon says to the eye comes first.
QString spokenOutcome(const ProcessingResult& result)
{
    QString message = QString::fromStdString(result.message);
    if (isSkipped(result) || isOfUndo(result)) return message;
    if (!result.isSuccess) return QStringLiteral("Failed: %1").arg(message);
    return QStringLiteral("Succeeded: %1, %2").arg(message, metricsLine(result));
}

} // namespace

ResultsListModel::Outcome ResultsListModel::outcome(const ProcessingResult& result)
{
    if (isOfUndo(result)) return Outcome::skip;
    if (result.isSuccess) return Outcome::success;
    return isSkipped(result) ? Outcome::skip : Outcome::failure;
}

ResultsListModel::ResultsListModel(ProcessingModel& processing, QObject* parent)
    : ComparableResults(parent), m_processing(processing), m_arrangement(processing)
{
    connect(&processing, &ProcessingModel::resultInserted, this, &ResultsListModel::insertNewest);
    connect(&processing, &ProcessingModel::resultChanged, this, &ResultsListModel::readChanged);
    connect(&processing, &ProcessingModel::resultsRemoved, this, &ResultsListModel::readAll);
    readAll();
}

const ProcessingResult& ResultsListModel::result(const QModelIndex& index) const
{
    return m_arrangement.at(index.row());
}

bool ResultsListModel::isComparable(const QModelIndex& index) const
{
    return result(index).outputURL.has_value();
}

std::optional<ProcessingResult> ResultsListModel::comparedResult(const QModelIndex& index)
{
    return result(index);
}

QModelIndex ResultsListModel::rowOf(const Uuid& result) const
{
    for (int row = 0; row < rowCount(); ++row) {
        if (m_arrangement.at(row).id == result) return index(row);
    }
    return {};
}

int ResultsListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_arrangement.rowCount();
}

int ResultsListModel::resultCount() const
{
    return m_processing.resultCount();
}

void ResultsListModel::arrange(ResultsOrder order, bool failuresOnly)
{
    beginResetModel();
    m_arrangement.arrange(order, failuresOnly);
    endResetModel();
}

void ResultsListModel::retry(const QModelIndex& index)
{
    if (index.isValid()) m_processing.retry(m_arrangement.modelRow(index.row()));
}

void ResultsListModel::retryFailed()
{
    m_processing.retryFailed();
}

void ResultsListModel::undo(const QModelIndex& index)
{
    if (index.isValid()) m_processing.undo(m_arrangement.modelRow(index.row()));
}

bool ResultsListModel::canUndo(const QModelIndex& index) const
{
    const ProcessingResult& row = result(index);
    return row.isSuccess && row.outputURL && m_processing.canUndo();
}

void ResultsListModel::clear()
{
    m_processing.clearResults();
}

QVariant ResultsListModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const ProcessingResult& row = result(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return fileNameText(row.sourceURL);
    case Qt::AccessibleDescriptionRole:
        return spokenOutcome(row);
    case Qt::ToolTipRole:
        return toolTip(row);
    case MessageRole:
        return QString::fromStdString(row.message);
    case IsSuccessRole:
        return row.isSuccess;
    case OutcomeRole:
        return static_cast<int>(outcome(row));
    case HasOutputRole:
        return row.outputURL.has_value();
    case MetricsTextRole:
        return metricsLine(row);
    default:
        return {};
    }
}

Qt::ItemFlags ResultsListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    Qt::ItemFlags flags = QAbstractListModel::flags(index) | Qt::ItemNeverHasChildren;
    flags.setFlag(Qt::ItemIsDragEnabled, result(index).outputURL.has_value());
    return flags;
}

QStringList ResultsListModel::mimeTypes() const
{
    return {uriListType};
}

QMimeData* ResultsListModel::mimeData(const QModelIndexList& indexes) const
{
    QByteArray uris;
    for (const QModelIndex& index : indexes) {
        if (const auto& output = result(index).outputURL)
            uris += QByteArray::fromStdString(fileUri(*output) + "\r\n");
    }
    if (uris.isEmpty()) return nullptr;
    auto* data = new QMimeData;
    data->setData(uriListType, uris);
    return data;
}

void ResultsListModel::insertNewest()
{
    // While views hear of a coming row, the processing model has it already and the arrangement has not.
    if (const std::optional<int> row = m_arrangement.placeOfNewest()) {
        beginInsertRows({}, *row, *row);
        m_arrangement.insertNewest(*row);
        endInsertRows();
    } else {
        m_arrangement.leaveOutNewest();
    }
    if (isFailed(m_processing.resultAt(0))) setFailureCount(m_failureCount + 1);
}

// What is in sight is read again; where a row stands by its order is left as it was.
void ResultsListModel::readChanged()
{
    if (rowCount() > 0) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

void ResultsListModel::readAll()
{
    int failures = 0;
    for (int row = 0; row < m_processing.resultCount(); ++row)
        failures += isFailed(m_processing.resultAt(row)) ? 1 : 0;
    setFailureCount(failures);
    // Without failures there would be no way out of a list of them alone.
    arrange(order(), showsFailuresOnly() && failures > 0);
}

void ResultsListModel::setFailureCount(int count)
{
    if (std::exchange(m_failureCount, count) != count) Q_EMIT failureCountChanged();
}

} // namespace lumora
