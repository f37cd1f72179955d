// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch.h"

#include "engine/worker/remote_picture_work.h"
#include "model/main_thread_queue.h"
#include "records/errors.h"
#include "system/freed_memory.h"
#include "system/private_folder.h"

#include <exception>
#include <new>
#include <system_error>
#include <utility>

namespace lumora {
namespace {

// Files whose originals are to go to the Trash once the disk has the output, beside those in work: a disk
// that takes a while serves them all at once.
constexpr int mostWaitingForDisk = 16;

bool mayBeHevc(OutputFormat format)
{
    return format == OutputFormat::heic || format == OutputFormat::original;
}

ProcessingResult failed(const std::filesystem::path& file, std::string message)
{
    return {file, std::nullopt, 0, 0, std::move(message), false};
}

} // namespace

Batch::Batch(BatchContext context)
    : m_context(std::move(context)), m_memory(m_context.services.memoryToShare),
      m_processes(m_context.services.workerProgram, mayBeHevc(m_context.settings.outputFormat))
{
}

Batch::~Batch()
{
    cancel();
    stop();
}

void Batch::expand(std::vector<std::filesystem::path> inputs, std::function<void(Expansion)> done)
{
    m_history = BatchMemory(m_context.services, m_context.settings);
    const auto work = [&context = m_context, &history = m_history, inputs = std::move(inputs),
                       done = std::move(done)](const std::stop_token& stop) {
        auto expansion = std::make_shared<Expansion>();
        expansion->files = context.services.expand(inputs, stop);
        expansion->folders = uniqueParentFolders(expansion->files);
        expansion->comesFromFolders = expansion->files.size() > inputs.size();
        expansion->names = std::make_shared<ImageOptimizer::BatchNames>(
            expansion->files, context.settings, stop, inputs, history.whatIsLeftAlone(context.settings));
        context.mainThread.post([done, expansion] { done(std::move(*expansion)); });
    };
    try {
        m_expansion = std::jthread(work);
    } catch (const std::system_error&) {
        work({}); // the system has no thread to give
    }
}

void Batch::start(Expansion expansion, int workers, std::function<void(ProcessingResult)> finished)
{
    m_files = std::move(expansion.files);
    m_names = std::move(expansion.names);
    m_finished = std::move(finished);
    m_workerCount = workers;
    if (auto folder = PrivateFolder::shared()) m_folder = std::move(*folder);
    m_workers = std::make_unique<WorkerPool>(static_cast<std::size_t>(workers + mostWaitingForDisk));
    handOut();
}

void Batch::handOut()
{
    while (canHandOut())
        handOutNext();
}

bool Batch::canHandOut() const
{
    return !m_isCancelled && !m_isPaused && m_next < m_files.size() &&
           m_inFlight - m_waitingForDisk < m_workerCount && m_waitingForDisk < mostWaitingForDisk;
}

void Batch::handOutNext()
{
    ++m_inFlight;
    m_workers->run([this, file = std::move(m_files[m_next++])] {
        bool waited = false;
        auto result = remembered(file, waited);
        m_context.mainThread.post([this, finished = m_finished, result = std::move(result), waited] {
            if (waited) --m_waitingForDisk;
            finished(result);
        });
        returnFreedMemory();
    });
}

void Batch::setPaused(bool paused)
{
    m_isPaused = paused;
    handOut();
}

void Batch::cancel()
{
    m_isCancelled = true;
    m_expansion.request_stop();
}

// Runs on a worker.
ProcessingResult Batch::remembered(const std::filesystem::path& file, bool& waitsForDisk)
{
    if (!m_history) return optimize(file, waitsForDisk, nullptr);
    FileTrace trace;
    ProcessingResult result = optimize(file, waitsForDisk, &trace);
    m_history.add(result, std::move(trace));
    return result;
}

// Runs on a worker. A file that fails never stops its batch.
ProcessingResult Batch::optimize(const std::filesystem::path& file, bool& waitsForDisk, FileTrace* trace)
{
    OptimizerServices services = m_context.services.optimizerServices;
    services.stop = m_stop.get_token();
    services.waitsForDisk = [this, &waitsForDisk] {
        waitsForDisk = true;
        m_context.mainThread.post([this] {
            ++m_waitingForDisk;
            handOut();
        });
    };
    services.disk = m_disk;
    services.names = m_names;
    services.outputs = m_outputs;
    services.memory = &m_memory;
    services.trace = trace;
    if (m_history) m_history.lendTo(services);
    services.pixels = [this](std::stop_token stop) {
        return std::make_unique<ImageOptimizer::RemotePictureWork>(m_processes, std::move(stop));
    };
    services.confirmOverwrite = [this](const std::filesystem::path& output) {
        return m_context.prompter.confirm(output, m_stop.get_token());
    };
    try {
        return m_context.services.optimize(file, m_context.settings, services);
    } catch (const std::bad_alloc&) {
        return failed(file, PlatformError::notEnoughMemory().what());
    } catch (const std::exception& error) {
        return failed(file, error.what());
    }
}

} // namespace lumora
