// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/worker_pool.h"

#include <system_error>
#include <utility>

namespace lumora {

WorkerPool::WorkerPool(int workers)
{
    try {
        for (int i = 0; i < workers; ++i)
            m_threads.emplace_back([this](const std::stop_token& stop) { work(stop); });
    } catch (const std::system_error&) {
        // The system has no more threads for us; those that there are do the work.
    }
}

WorkerPool::~WorkerPool()
{
    for (auto& thread : m_threads)
        thread.request_stop();
}

void WorkerPool::run(std::function<void()> task)
{
    if (m_threads.empty()) return task();
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
    }
    m_taskCame.notify_one();
}

void WorkerPool::work(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (m_taskCame.wait(lock, stop, [this] { return !m_tasks.empty(); }) && !stop.stop_requested()) {
        const auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        lock.unlock();
        task();
        lock.lock();
    }
}

} // namespace lumora
