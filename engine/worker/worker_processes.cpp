// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/worker/worker_processes.h"

#include "engine/worker/worker_program.h"
#include "system/file_services.h"
#include "system/message_channel.h"

#include <algorithm>
#include <cstdlib>
#include <thread>
#include <utility>

namespace lumora::ImageOptimizer {

std::filesystem::path findWorker(const std::filesystem::path& bundle)
{
    const char* const preferred = std::getenv("LUMORA_WORKER_PATH");
    if (preferred && isExecutableFile(preferred)) return std::filesystem::absolute(preferred);
    return bundle / "Contents" / "MacOS" / "lumora-worker";
}

WorkerProcesses::WorkerProcesses(std::filesystem::path executable, bool encodesHevc,
                                 const WorkerLimits& limits)
    : m_executable(std::move(executable)), m_encodesHevc(encodesHevc), m_limits(limits),
      m_processors(std::max(1, static_cast<int>(std::thread::hardware_concurrency())))
{
}

WorkerProcesses::~WorkerProcesses() = default;

int WorkerProcesses::processorsForOne() const
{
    return std::max(1, m_processors / std::max(1, m_works.load()));
}

std::unique_ptr<ServantProcess> WorkerProcesses::takeIdle()
{
    const std::lock_guard lock(m_mutex);
    while (!m_idle.empty()) {
        auto process = std::move(m_idle.back());
        m_idle.pop_back();
        // Nobody asked it anything: whatever is heard of it is its end.
        if (!hasNews(process->channel(), std::chrono::milliseconds(0))) return process;
    }
    return nullptr;
}

Result<std::unique_ptr<ServantProcess>> WorkerProcesses::start() const
{
    std::vector<std::string> arguments;
    if (m_encodesHevc) arguments.emplace_back(hevcArgument);
    auto started = ServantProcess::start(m_executable, std::move(arguments));
    if (!started) return started.error();
    return std::make_unique<ServantProcess>(std::move(*started));
}

void WorkerProcesses::giveBack(std::unique_ptr<ServantProcess> process)
{
    const auto usage = process->usage();
    if (!usage || usage->residentBytes > m_limits.keptBytes) return;
    const std::lock_guard lock(m_mutex);
    m_idle.push_back(std::move(process));
}

} // namespace lumora::ImageOptimizer
