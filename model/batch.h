// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One batch at work: the expansion of its inputs, its settings, its workers. Belongs to the main thread, on
// which it calls back. Destruction stops the files in work, answers open questions with skip and waits for
// the threads; nothing is called back after that.
#pragma once

#include "engine/memory_budget.h"
#include "engine/worker/worker_processes.h"
#include "model/overwrite_prompter.h"
#include "model/processing_services.h"
#include "model/worker_pool.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>
#include <vector>

namespace lumora {

class MainThreadQueue;

// What the workers of a batch need, shared with them.
struct BatchContext
{
    const OptimizerSettings settings;
    const ProcessingServices& services;
    MainThreadQueue& mainThread;
    OverwritePrompter& prompter;
};

class Batch
{
public:
    struct Expansion
    {
        std::vector<std::filesystem::path> files;
        std::vector<std::filesystem::path> folders; // those that `files` lie in
        std::shared_ptr<const ImageOptimizer::BatchNames> names;
    };

    explicit Batch(BatchContext context);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

    const OptimizerSettings& settings() const { return m_context.settings; }

    // Expands off the main thread and calls `done` once.
    void expand(std::vector<std::filesystem::path> inputs, std::function<void(Expansion)> done);

    // Hands out the first `workers` files of the expansion; `finished` comes once a file, in the order in
    // which they finish.
    void start(Expansion expansion, int workers, std::function<void(ProcessingResult)> finished);
    // After a result: hands out the next file if there is one.
    void handOutNext();
    // No file is in flight.
    bool isIdle() const { return m_inFlight == 0; }
    // Counts one file as finished.
    void fileFinished() { --m_inFlight; }

    // Nothing more is handed out and a running expansion ends early.
    void cancel();
    bool isCancelled() const { return m_isCancelled; }
    // Files in flight fail as soon as they can.
    void stop() { m_stop.request_stop(); }

private:
    ProcessingResult optimize(const std::filesystem::path& file) const;

    const BatchContext m_context;
    std::function<void(ProcessingResult)> m_finished;
    std::vector<std::filesystem::path> m_files; // those before m_next are moved from
    std::shared_ptr<const ImageOptimizer::BatchNames> m_names;
    std::size_t m_next = 0;
    int m_inFlight = 0;
    bool m_isCancelled = false;
    std::stop_source m_stop;
    mutable MemoryBudget m_memory;                                // used by the workers
    std::unique_ptr<ImageOptimizer::WorkerProcesses> m_processes; // null where pixels stay in this one
    std::jthread m_expansion;
    std::unique_ptr<WorkerPool> m_workers;
};

} // namespace lumora
