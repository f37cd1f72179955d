// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The workers of a batch: processes that do pixels only, one for each file that is in work, reused from file
// to file. A worker that crashes, hangs or grows is replaced. Thread-safe.
#pragma once

#include "system/servant_process.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <vector>

namespace lumora::ImageOptimizer {

// The worker's program: what LUMORA_WORKER_PATH names when that is executable, else
// Contents/MacOS/lumora-worker of the bundle, whether it is there or not. Looked up anew at each call.
std::filesystem::path findWorker(const std::filesystem::path& bundle);

// What one file may take of its worker.
struct WorkerLimits
{
    std::chrono::seconds processorTime{120};
    std::chrono::seconds processorTimeAMegabyte{2}; // of the memory that the file needs, in addition
    // Without an answer and without any processor time: not slow but stuck.
    std::chrono::seconds silence{60};
    std::int64_t openingBytes = std::int64_t{768} << 20U; // before it is known what the file needs
    std::int64_t keptBytes = std::int64_t{256} << 20U;    // beyond them, a worker is not used again
};

class WorkerProcesses
{
public:
    // Only workers that are told so are ready to encode HEVC.
    explicit WorkerProcesses(std::filesystem::path executable, bool encodesHevc = false,
                             const WorkerLimits& limits = {});
    // After every work that it is lent to.
    ~WorkerProcesses();
    WorkerProcesses(const WorkerProcesses&) = delete;
    WorkerProcesses& operator=(const WorkerProcesses&) = delete;

    const WorkerLimits& limits() const { return m_limits; }
    int processors() const { return m_processors; } // of the machine; at least 1

    // To be told of every file that is worked on, when its work begins and when it ends.
    void workBegan() { ++m_works; }
    void workEnded() { --m_works; }
    // How many of the machine's processors each of them may keep busy, at least 1.
    int processorsForOne() const;

    // Null when there is none.
    std::unique_ptr<ServantProcess> takeIdle();
    // A new one, which may still be loading, and which ends with this thread. An Error's description is the
    // system's reason alone.
    Result<std::unique_ptr<ServantProcess>> start() const;
    // For further use.
    void giveBack(std::unique_ptr<ServantProcess> process);

private:
    const std::filesystem::path m_executable;
    const bool m_encodesHevc;
    const WorkerLimits m_limits;
    const int m_processors; // asked for once: the answer is read from a file
    std::atomic<int> m_works{0};
    std::mutex m_mutex;
    std::vector<std::unique_ptr<ServantProcess>> m_idle; // guarded by m_mutex
};

} // namespace lumora::ImageOptimizer
