// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/worker/remote_picture_work.h"

#include "engine/worker/worker_program.h"
#include "system/message_channel.h"
#include "types/format.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>

namespace lumora::ImageOptimizer {
namespace {

using Kind = WorkError::Kind;
using namespace std::chrono_literals;

std::string storyOf(int exitStatus)
{
    constexpr int signals = 128;
    if (exitStatus > signals) return "it ended by signal " + std::to_string(exitStatus - signals);
    return "it ended with status " + std::to_string(exitStatus);
}

// Of the decoder's, of the encoder's and of those that read rows ahead between them, for stacks and what else
// threads set aside, which is hardly ever used.
std::int64_t addressesOfThreads(int processors)
{
    constexpr std::int64_t ofOne = std::int64_t{72} << 20U;
    constexpr int between = 4;
    return ofOne * (2 * processors + between);
}

} // namespace

RemotePictureWork::RemotePictureWork(WorkerProcesses& processes, std::stop_token stop)
    : m_processes(processes), m_stop(std::move(stop))
{
    m_processes.workBegan();
}

RemotePictureWork::~RemotePictureWork()
{
    RemotePictureWork::close();
    m_processes.workEnded();
}

WorkResult<PictureHead> RemotePictureWork::open(int file, const OptimizerSettings& settings)
{
    m_file = file;
    m_opening = {.action = WorkerAction::open, .settings = PixelSettings::of(settings)};
    auto reply = askToOpen();
    if (!reply) return reply.error();
    return std::move(reply->head);
}

WorkResult<WorkerReply> RemotePictureWork::askToOpen()
{
    if (!m_process) m_process = m_processes.takeIdle();
    if (!m_process) {
        auto process = m_processes.start();
        if (!process) return WorkError{Kind::notStarted, process.error().description};
        m_process = std::move(*process);
        // Until it answers it may still be loading, which is not to count as the file's.
        auto ready = ask({.action = WorkerAction::close}, -1, Kind::notStarted);
        if (!ready) return ready;
    }
    const auto before = m_process->usage();
    if (before) limit(*before, 0);
    auto reply = ask(m_opening, m_file, Kind::unreadable);
    if (!reply) return reply;
    // Content has one of the types of the table, whatever the worker says.
    if (!formatWithIdentifier(reply->head.typeIdentifier)) return endOfWorker(Kind::unreadable);
    if (before) limit(*before, reply->head.memoryNeed);
    return reply;
}

WorkResult<bool> RemotePictureWork::proveReadable()
{
    const auto reply = ask({.action = WorkerAction::proveReadable}, -1, Kind::unreadable);
    if (!reply) return reply.error();
    return reply->answer;
}

WorkResult<PictureSize> RemotePictureWork::encode(int output, const std::string& typeIdentifier)
{
    const auto reply =
        ask({.action = WorkerAction::encode, .typeIdentifier = typeIdentifier, .processors = processors()},
            output, Kind::writing);
    if (!reply) return reply.error();
    return reply->size;
}

WorkResult<PictureSize> RemotePictureWork::writePpm(int output)
{
    const auto reply =
        ask({.action = WorkerAction::writePpm, .processors = processors()}, output, Kind::writing);
    if (!reply) return reply.error();
    return reply->size;
}

WorkResult<bool> RemotePictureWork::copy(int output)
{
    const auto reply = ask({.action = WorkerAction::copy}, output, Kind::writing);
    if (!reply) return reply.error();
    return reply->answer;
}

WorkResult<Done> RemotePictureWork::findDamage()
{
    // A worker that died of the encoder leaves the question open; one that dies again died of the input.
    if (!m_process) {
        const auto opened = askToOpen();
        if (!opened) return opened.error();
    }
    const auto reply = ask({.action = WorkerAction::findDamage}, -1, Kind::unreadable);
    if (!reply) return reply.error();
    return Done{};
}

std::vector<std::string> RemotePictureWork::losses(int output, const std::string& typeIdentifier)
{
    auto reply =
        ask({.action = WorkerAction::losses, .typeIdentifier = typeIdentifier}, output, Kind::writing);
    return reply ? std::move(reply->losses) : std::vector<std::string>();
}

bool RemotePictureWork::isWhole(int output)
{
    const auto reply = ask({.action = WorkerAction::isWhole}, output, Kind::writing);
    return reply && reply->answer;
}

WorkResult<PictureLook> RemotePictureWork::look()
{
    auto reply = ask({.action = WorkerAction::look}, -1, Kind::unreadable);
    if (!reply) return reply.error();
    return PictureLook{reply->size, std::move(reply->profile)};
}

WorkResult<Done> RemotePictureWork::drawPart(int output, const PicturePart& part)
{
    const auto reply = ask({.action = WorkerAction::drawPart, .part = part, .processors = processors()},
                           output, Kind::unreadable);
    if (!reply) return reply.error();
    return Done{};
}

void RemotePictureWork::close()
{
    if (!m_process) return;
    const auto reply = ask({.action = WorkerAction::close}, -1, Kind::stopped);
    if (reply) m_processes.giveBack(std::move(m_process));
    m_process.reset();
}

std::uint8_t RemotePictureWork::processors() const
{
    constexpr int most = std::numeric_limits<std::uint8_t>::max();
    return static_cast<std::uint8_t>(std::min(m_processes.processorsForOne(), most));
}

WorkResult<WorkerReply> RemotePictureWork::ask(const WorkerRequest& request, int file, WorkError::Kind lost)
{
    if (!m_process) return WorkError{lost};
    std::optional<WorkerReply> got;
    {
        const std::stop_callback stopped(m_stop, [this] { m_process->kill(); });
        if (sendMessage(m_process->channel(), messageOf(request), file)) got = reply();
    }
    if (!got) return endOfWorker(lost);
    if (got->error) return *got->error;
    return std::move(*got);
}

// Absent when none is to be had any more.
std::optional<WorkerReply> RemotePictureWork::reply()
{
    auto lastTime = 0ms;
    auto lastProgress = std::chrono::steady_clock::now();
    while (!hasNews(m_process->channel(), 1s)) {
        const auto now = std::chrono::steady_clock::now();
        const auto usage = m_process->usage();
        if (!usage) return std::nullopt;
        if (usage->processorTime > lastTime) {
            lastTime = usage->processorTime;
            lastProgress = now;
        }
        if (now - lastProgress > m_processes.limits().silence) return std::nullopt;
    }
    std::array<std::byte, WorkerReply::bytes> message{};
    FileDescriptor none;
    if (!receiveMessage(m_process->channel(), message, none)) return std::nullopt;
    return replyIn(message);
}

WorkError RemotePictureWork::endOfWorker(WorkError::Kind lost)
{
    const int status = m_process->end();
    m_process.reset();
    if (m_stop.stop_requested()) return {Kind::stopped};
    if (status == outOfMemoryExit) return {Kind::memory};
    return {lost, lost == Kind::notStarted ? storyOf(status) : std::string()};
}

// For the file, beside what the worker took before. An estimate of its need may be half of the truth.
void RemotePictureWork::limit(const ProcessUsage& before, std::int64_t need)
{
    const WorkerLimits& limits = m_processes.limits();
    constexpr std::int64_t megabyte = 1'000'000;
    m_process->limitMemory(before.virtualBytes + limits.openingBytes +
                           addressesOfThreads(m_processes.processors()) + 2 * need);
    m_process->limitProcessorTime(std::chrono::ceil<std::chrono::seconds>(before.processorTime) +
                                  limits.processorTime + limits.processorTimeAMegabyte * (need / megabyte));
}

} // namespace lumora::ImageOptimizer
