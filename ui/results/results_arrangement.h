// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which results are shown, and in which order. Newest first and all of them, as the processing model has
// them, takes no memory; any other arrangement is a list of places, into which a new result is put where it
// belongs. Main thread.
#pragma once

#include "records/processing_result.h"

#include <QCollator>

#include <optional>
#include <vector>

namespace lumora {

class ProcessingModel;

enum class ResultsOrder { newest, saving, name };

class ResultsArrangement
{
public:
    // The processing model outlives this object.
    explicit ResultsArrangement(const ProcessingModel& processing);

    ResultsOrder order() const { return m_order; }
    bool showsFailuresOnly() const { return m_failuresOnly; }
    // Arranges all results anew.
    void arrange(ResultsOrder order, bool failuresOnly);
    int rowCount() const;
    const ProcessingResult& at(int row) const;
    // The row in the processing model.
    int modelRow(int row) const;

    // Where the newest result of the processing model belongs; absent where it is not shown.
    std::optional<int> placeOfNewest() const;
    // Takes it in there, or knows that it is not shown.
    void insertNewest(int row);
    void leaveOutNewest();

private:
    bool isPlain() const { return m_order == ResultsOrder::newest && !m_failuresOnly; }
    bool isShown(const ProcessingResult& result) const;
    bool comesBefore(const ProcessingResult& left, const ProcessingResult& right) const;
    const ProcessingResult& result(int place) const;
    void sortByName();

    const ProcessingModel& m_processing;
    ResultsOrder m_order = ResultsOrder::newest;
    bool m_failuresOnly = false;
    int m_known; // results taken in
    // Counted from the oldest result, whose place does not change when newer ones come.
    std::vector<int> m_places;
    QCollator m_collator;
};

} // namespace lumora
