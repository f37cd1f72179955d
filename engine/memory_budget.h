// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Memory that the workers of a batch share out before they decode: large files wait for one another, so that
// many at once do not take more than the machine has. Thread-safe.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace lumora {

class MemoryBudget
{
public:
    // What a file may take without being counted: as many at once as there are workers fit into any machine.
    static constexpr std::int64_t uncounted = std::int64_t{64} << 20U;

    // What one file has taken, given back with this object. The budget must outlive it.
    class Share
    {
    public:
        Share() = default;
        Share(Share&& other) noexcept
            : m_budget(std::exchange(other.m_budget, nullptr)), m_bytes(other.m_bytes)
        {
        }
        Share& operator=(Share&& other) noexcept
        {
            std::swap(m_budget, other.m_budget);
            std::swap(m_bytes, other.m_bytes);
            return *this;
        }
        ~Share();

    private:
        friend MemoryBudget;
        Share(MemoryBudget& budget, std::int64_t bytes) : m_budget(&budget), m_bytes(bytes) {}

        MemoryBudget* m_budget = nullptr;
        std::int64_t m_bytes = 0;
    };

    // `measure` tells how many bytes may be shared out; it is asked whenever none are, because other programs
    // come and go.
    explicit MemoryBudget(std::function<std::int64_t()> measure);
    MemoryBudget(const MemoryBudget&) = delete;
    MemoryBudget& operator=(const MemoryBudget&) = delete;

    // Waits until the bytes are there, or until nobody else has any: one file always goes on, however large.
    // Those that wait are served in the order in which they came, so that a large one is never overtaken for
    // ever. Absent when the stop was requested first. Whoever holds a share must not wait for another one.
    std::optional<Share> take(std::int64_t bytes, const std::stop_token& stop);

private:
    bool fits(std::int64_t bytes);
    void giveBack(std::int64_t bytes);

    const std::function<std::int64_t()> m_measure;
    std::mutex m_mutex;
    std::condition_variable_any m_changed;
    // Guarded by m_mutex.
    std::int64_t m_limit = 0;
    std::int64_t m_taken = 0;
    std::deque<const void*> m_waiting;
};

} // namespace lumora
