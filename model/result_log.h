// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The results so far, oldest first, so that a new row costs the same however many there are. One thread.
#pragma once

#include "records/processing_result.h"

#include <cstddef>
#include <deque>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

namespace lumora {

class ResultLog
{
public:
    using Which = std::function<bool(const ProcessingResult&)>;

    int count() const { return static_cast<int>(m_results.size()); }
    // Row 0 is the newest. A reference stays valid until rows are removed.
    const ProcessingResult& at(int row) const;

    void add(const ProcessingResult& result) { m_results.push_back(result); }
    void clear() { m_results.clear(); }
    // Removes those that are named, and returns their sources, oldest first.
    std::vector<std::filesystem::path> take(const Which& which);
    // Puts it in the place of the one with its identity; false when there is none. Going through the results
    // from new to old costs the same for each.
    bool replace(const ProcessingResult& result);

private:
    std::deque<ProcessingResult> m_results;
    std::size_t m_replaced = 0; // the place of the last one, from the oldest on
};

} // namespace lumora
