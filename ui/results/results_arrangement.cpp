// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_arrangement.h"

#include "model/batch_outcome.h"
#include "model/processing_model.h"
#include "ui/controls/path_text.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace lumora {
namespace {

// Files without an output saved nothing and come last.
std::int64_t saving(const ProcessingResult& result)
{
    return result.isSuccess ? result.originalBytes - result.outputBytes
                            : std::numeric_limits<std::int64_t>::min();
}

} // namespace

ResultsArrangement::ResultsArrangement(const ProcessingModel& processing)
    : m_processing(processing), m_known(processing.resultCount())
{
    m_collator.setNumericMode(true);
    m_collator.setCaseSensitivity(Qt::CaseInsensitive);
}

int ResultsArrangement::rowCount() const
{
    return isPlain() ? m_known : static_cast<int>(m_places.size());
}

const ProcessingResult& ResultsArrangement::result(int place) const
{
    return m_processing.resultAt(m_processing.resultCount() - 1 - place);
}

int ResultsArrangement::modelRow(int row) const
{
    const int place = isPlain() ? m_known - 1 - row : m_places.at(static_cast<std::size_t>(row));
    return m_processing.resultCount() - 1 - place;
}

const ProcessingResult& ResultsArrangement::at(int row) const
{
    return m_processing.resultAt(modelRow(row));
}

bool ResultsArrangement::isShown(const ProcessingResult& result) const
{
    return !m_failuresOnly || isFailed(result);
}

bool ResultsArrangement::comesBefore(const ProcessingResult& left, const ProcessingResult& right) const
{
    if (m_order == ResultsOrder::saving) return saving(left) > saving(right);
    return m_collator.compare(fileNameText(left.sourceURL), fileNameText(right.sourceURL)) < 0;
}

void ResultsArrangement::arrange(ResultsOrder order, bool failuresOnly)
{
    m_order = order;
    m_failuresOnly = failuresOnly;
    m_known = m_processing.resultCount();
    m_places.clear();
    if (isPlain()) return;
    for (int place = m_known - 1; place >= 0; --place) {
        if (isShown(result(place))) m_places.push_back(place);
    }
    if (order == ResultsOrder::name) return sortByName();
    if (order == ResultsOrder::saving)
        std::stable_sort(m_places.begin(), m_places.end(),
                         [this](int left, int right) { return comesBefore(result(left), result(right)); });
}

// A key for each name: comparing them is much faster than comparing the names.
void ResultsArrangement::sortByName()
{
    std::vector<std::pair<QCollatorSortKey, int>> keyed;
    keyed.reserve(m_places.size());
    for (const int place : m_places)
        keyed.emplace_back(m_collator.sortKey(fileNameText(result(place).sourceURL)), place);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::transform(keyed.begin(), keyed.end(), m_places.begin(),
                   [](const auto& pair) { return pair.second; });
}

// Before its equals: among them, newer ones come first.
std::optional<int> ResultsArrangement::placeOfNewest() const
{
    const ProcessingResult& newest = m_processing.resultAt(0);
    if (!isShown(newest)) return std::nullopt;
    if (m_order == ResultsOrder::newest) return 0;
    const auto found =
        std::lower_bound(m_places.begin(), m_places.end(), newest,
                         [this](int place, const auto& made) { return comesBefore(result(place), made); });
    return static_cast<int>(found - m_places.begin());
}

void ResultsArrangement::insertNewest(int row)
{
    m_known = m_processing.resultCount();
    if (!isPlain()) m_places.insert(m_places.begin() + row, m_known - 1);
}

void ResultsArrangement::leaveOutNewest()
{
    m_known = m_processing.resultCount();
}

} // namespace lumora
