// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/memory_budget.h"

#include <algorithm>

namespace lumora {

MemoryBudget::Share::~Share()
{
    if (m_budget) m_budget->giveBack(m_bytes);
}

MemoryBudget::MemoryBudget(std::function<std::int64_t()> measure) : m_measure(std::move(measure)) {}

std::optional<MemoryBudget::Share> MemoryBudget::take(std::int64_t bytes, const std::stop_token& stop)
{
    if (bytes <= uncounted) return Share();
    std::unique_lock lock(m_mutex);
    const void* const self = &bytes; // a place in the line, which no other thread's call has
    m_waiting.push_back(self);
    const bool isServed =
        m_changed.wait(lock, stop, [&] { return m_waiting.front() == self && fits(bytes); });
    std::erase(m_waiting, self);
    m_changed.notify_all(); // the next in the line may fit as well
    if (!isServed) return std::nullopt;
    m_taken += bytes;
    return Share(*this, bytes);
}

bool MemoryBudget::fits(std::int64_t bytes)
{
    if (m_taken == 0) {
        m_limit = m_measure();
        return true;
    }
    return bytes <= m_limit - m_taken;
}

void MemoryBudget::giveBack(std::int64_t bytes)
{
    const std::scoped_lock lock(m_mutex);
    m_taken -= bytes;
    m_changed.notify_all();
}

} // namespace lumora
