// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One batch at work: the expansion of its inputs, its settings, its workers. Belongs to the main thread, on
// which it calls back. Destruction stops the files in work, answers open questions with skip and waits for
// the threads; nothing is called back after that.
#pragma once

#include "engine/memory_budget.h"
#include "engine/worker/worker_processes.h"
#include "model/batch_memory.h"
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
class PrivateFolder;

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
        bool comesFromFolders = false;              // more files than were named
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
    // After a result: hands out further files while there are workers free and the batch is not paused.
    void handOut();
    // It was started, no file is in flight, and none will be.
    bool isDone() const
    {
        return m_workers && m_inFlight == 0 && (m_isCancelled || m_next == m_files.size());
    }
    // Counts one file as finished.
    void fileFinished() { --m_inFlight; }

    // While it is paused nothing more is handed out. Only a batch that was started can be paused.
    bool canPause() const { return m_workers && !m_isCancelled; }
    void setPaused(bool paused);
    bool isPaused() const { return m_isPaused; }

    // Nothing more is handed out and a running expansion ends early.
    void cancel();
    bool isCancelled() const { return m_isCancelled; }
    // Files in flight fail as soon as they can.
    void stop() { m_stop.request_stop(); }

private:
    bool canHandOut() const;
    void handOutNext();
    ProcessingResult remembered(const std::filesystem::path& file, bool& waitsForDisk);
    ProcessingResult optimize(const std::filesystem::path& file, bool& waitsForDisk, FileTrace* trace);

    const BatchContext m_context;
    std::function<void(ProcessingResult)> m_finished;
    std::vector<std::filesystem::path> m_files; // those before m_next are moved from
    std::shared_ptr<const ImageOptimizer::BatchNames> m_names;
    const std::shared_ptr<ImageOptimizer::BatchOutputs> m_outputs =
        std::make_shared<ImageOptimizer::BatchOutputs>();
    std::shared_ptr<const PrivateFolder> m_folder; // made once for the whole batch; each file does without
    std::size_t m_next = 0;
    int m_inFlight = 0;
    int m_waitingForDisk = 0; // of those in flight: their workers are free
    int m_workerCount = 0;
    BatchMemory m_history;
    bool m_isPaused = false;
    bool m_isCancelled = false;
    std::stop_source m_stop;
    const std::shared_ptr<DiskSync> m_disk = std::make_shared<DiskSync>();
    // Used by the workers.
    MemoryBudget m_memory;
    ImageOptimizer::WorkerProcesses m_processes;
    std::jthread m_expansion;
    std::unique_ptr<WorkerPool> m_workers;
};

} // namespace lumora
