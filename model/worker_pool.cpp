// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/worker_pool.h"

#include <exception>
#include <utility>

namespace lumora {

WorkerPool::WorkerPool(std::size_t mostThreads) : m_mostThreads(mostThreads) {}

WorkerPool::~WorkerPool()
{
    for (auto& thread : m_threads)
        thread.request_stop();
}

void WorkerPool::run(std::function<void()> task)
{
    {
        const std::lock_guard lock(m_mutex);
        m_tasks.push_back(std::move(task));
        if (m_tasks.size() > m_free) startThread();
        if (!m_threads.empty()) return m_taskCame.notify_one();
        task = std::move(m_tasks.front());
        m_tasks.pop_front();
    }
    task();
}

void WorkerPool::startThread()
try {
    if (m_threads.size() == m_mostThreads) return;
    m_threads.emplace_back([this](const std::stop_token& stop) { work(stop); });
    ++m_free;
} catch (const std::exception&) {
    // The system has no more threads for us; those that there are do the work.
}

void WorkerPool::work(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    while (m_taskCame.wait(lock, stop, [this] { return !m_tasks.empty(); }) && !stop.stop_requested()) {
        const auto task = std::move(m_tasks.front());
        m_tasks.pop_front();
        --m_free;
        lock.unlock();
        task();
        lock.lock();
        ++m_free;
    }
}

} // namespace lumora
