// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/result_log.h"

#include <utility>

namespace lumora {

const ProcessingResult& ResultLog::at(int row) const
{
    return m_results.at(m_results.size() - 1 - static_cast<std::size_t>(row));
}

std::vector<std::filesystem::path> ResultLog::take(const Which& which)
{
    std::vector<std::filesystem::path> files;
    std::deque<ProcessingResult> kept;
    for (ProcessingResult& result : m_results) {
        if (which(result))
            files.push_back(std::move(result.sourceURL));
        else
            kept.push_back(std::move(result));
    }
    m_results.swap(kept);
    return files;
}

bool ResultLog::replace(const ProcessingResult& result)
{
    const std::size_t count = m_results.size();
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t place = (m_replaced % count + count + count - step) % count;
        if (m_results[place].id != result.id) continue;
        m_results[place] = result;
        m_replaced = place;
        return true;
    }
    return false;
}

} // namespace lumora
