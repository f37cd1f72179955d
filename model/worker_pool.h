// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Threads of one batch. Own ones rather than the process-wide pool: a worker blocks while its encoder runs or
// its question stands.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

namespace lumora {

class WorkerPool
{
public:
    // Threads start when there is something to do for them, up to so many.
    explicit WorkerPool(std::size_t mostThreads);
    // Waits for the tasks that run and drops the others.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // Tasks start in the order given. They must not throw. Where the system refused even one thread, the
    // caller does them.
    void run(std::function<void()> task);

private:
    void startThread(); // one more, if it may be; under the lock
    void work(const std::stop_token& stop);

    const std::size_t m_mostThreads;
    std::mutex m_mutex;
    std::condition_variable_any m_taskCame;
    std::deque<std::function<void()>> m_tasks; // guarded by m_mutex
    std::size_t m_free = 0;                    // threads without a task; guarded by m_mutex
    std::vector<std::jthread> m_threads;
};

} // namespace lumora
