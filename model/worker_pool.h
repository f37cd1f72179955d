// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Threads of one batch. Own ones rather than the process-wide pool: a worker blocks while its encoder runs or
// its question stands.
#pragma once

#include <condition_variable>
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
    explicit WorkerPool(int workers);
    // Waits for the tasks that run and drops the others.
    ~WorkerPool();
    WorkerPool(const WorkerPool&) = delete;
    WorkerPool& operator=(const WorkerPool&) = delete;

    // Tasks start in the order given. They must not throw. Where the system refused even one thread, the
    // caller does them.
    void run(std::function<void()> task);

private:
    void work(const std::stop_token& stop);

    std::mutex m_mutex;
    std::condition_variable_any m_taskCame;
    std::deque<std::function<void()>> m_tasks; // guarded by m_mutex
    std::vector<std::jthread> m_threads;
};

} // namespace lumora
