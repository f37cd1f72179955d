// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The work on the pixels of one file, done by a worker process. What becomes of the worker is seen here and
// told as the outcome of the call.
#pragma once

#include "engine/picture_work.h"
#include "engine/worker/worker_messages.h"
#include "engine/worker/worker_processes.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>

namespace lumora::ImageOptimizer {

class RemotePictureWork : public PictureWork
{
public:
    // In a process from its first call on. A stop ends that process at once, and the call that waits for it
    // with WorkError::Kind::stopped. Outlived by the processes and by the thread.
    RemotePictureWork(WorkerProcesses& processes, std::stop_token stop);
    ~RemotePictureWork() override;

    WorkResult<PictureHead> open(int file, const OptimizerSettings& settings) override;
    WorkResult<bool> proveReadable() override;
    WorkResult<PictureSize> encode(int output, const std::string& typeIdentifier) override;
    WorkResult<PictureSize> writePpm(int output) override;
    WorkResult<bool> copy(int output) override;
    WorkResult<Done> findDamage() override;
    std::vector<std::string> losses(int output, const std::string& typeIdentifier) override;
    bool isWhole(int output) override;
    WorkResult<PictureLook> look() override;
    WorkResult<Done> drawPart(int output, const PicturePart& part) override;
    void close() override;

private:
    // What the worker answers; `lost` is what its end means.
    WorkResult<WorkerReply> ask(const WorkerRequest& request, int file, WorkError::Kind lost);
    WorkResult<WorkerReply> askToOpen();
    // That the worker may keep busy now.
    std::uint8_t processors() const;
    std::optional<WorkerReply> reply();
    WorkError endOfWorker(WorkError::Kind lost);
    void limit(const ProcessUsage& before, std::int64_t need);

    WorkerProcesses& m_processes;
    std::stop_token m_stop;
    std::unique_ptr<ServantProcess> m_process;
    int m_file = -1;
    WorkerRequest m_opening;
};

} // namespace lumora::ImageOptimizer
