// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/pending_inputs.h"

#include "system/paths.h"

#include <utility>

namespace lumora {

int PendingInputs::add(const std::vector<std::filesystem::path>& urls)
{
    int added = 0;
    for (const auto& url : urls) {
        if (!m_keys.insert(deduplicationKey(url)).second) continue;
        m_urls.push_back(url);
        ++added;
    }
    return added;
}

std::vector<std::filesystem::path> PendingInputs::take()
{
    m_keys.clear();
    return std::exchange(m_urls, {});
}

} // namespace lumora
