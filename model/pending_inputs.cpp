// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/pending_inputs.h"

#include "system/paths.h"

#include <utility>

namespace lumora {

int PendingInputs::add(const std::vector<std::filesystem::path>& paths)
{
    int added = 0;
    for (const auto& path : paths) {
        if (!m_keys.insert(deduplicationKey(path)).second) continue;
        m_paths.push_back(path);
        ++added;
    }
    return added;
}

std::vector<std::filesystem::path> PendingInputs::take()
{
    m_keys.clear();
    return std::exchange(m_paths, {});
}

} // namespace lumora
