// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/side_by_side.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace lumora {
namespace {

std::atomic<int> processors{1};

class SharedWork
{
public:
    SharedWork(std::size_t count, const std::function<void(std::size_t)>& work) : m_count(count), m_work(work)
    {
    }

    // One thread's share: whatever nobody has begun.
    void take() noexcept
    try {
        for (std::size_t i = m_next++; i < m_count; i = m_next++)
            m_work(i);
    } catch (...) {
        m_next = m_count;
        const std::lock_guard lock(m_mutex);
        m_failure = std::current_exception();
    }

    // After all threads have ended.
    void throwFailure() const
    {
        if (m_failure) std::rethrow_exception(m_failure);
    }

private:
    const std::size_t m_count;
    const std::function<void(std::size_t)>& m_work;
    std::atomic<std::size_t> m_next{0};
    std::mutex m_mutex;
    std::exception_ptr m_failure; // guarded by m_mutex
};

} // namespace

void useProcessors(int count)
{
    processors = std::max(count, 1);
}

int usedProcessors()
{
    return processors;
}

void runSideBySide(std::size_t count, const std::function<void(std::size_t)>& work)
{
    SharedWork shared(count, work);
    {
        std::vector<std::jthread> helpers;
        const std::size_t threads = std::min(count, static_cast<std::size_t>(usedProcessors()));
        try {
            while (helpers.size() + 1 < threads)
                helpers.emplace_back([&shared] { shared.take(); });
        } catch (const std::system_error&) {
            // Those that there are do it all.
        }
        shared.take();
    }
    shared.throwFailure();
}

} // namespace lumora
