// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/opened_picture.h"

#include "records/errors.h"

#include <utility>

namespace lumora::ImageOptimizer {
namespace {

using Kind = WorkError::Kind;

[[noreturn]] void raise(const WorkError& error)
{
    switch (error.kind) {
    case Kind::memory:
        throw PlatformError::notEnoughMemory();
    case Kind::stopped:
        throw PlatformError("The work was stopped.");
    case Kind::notStarted:
        throw PlatformError("The worker could not be started: " + error.reason);
    case Kind::unreadable:
    case Kind::unsupported:
    case Kind::drawing:
    case Kind::writing:
        break;
    }
    throw ImageOptimizerError::unreadableImage();
}

template <class T>
T got(WorkResult<T> result)
{
    if (!result) raise(result.error());
    return std::move(*result);
}

bool isOfOutput(Kind kind)
{
    return kind == Kind::unsupported || kind == Kind::drawing || kind == Kind::writing;
}

// What only the caller has a name for passes.
template <class T>
WorkResult<T> blamed(WorkResult<T> result)
{
    if (!result && !isOfOutput(result.error().kind)) raise(result.error());
    return result;
}

std::unique_ptr<PictureWork> workFor(const OptimizerServices& services)
{
    if (!services.pixels) raise({Kind::notStarted, "there is none"});
    return services.pixels(services.stop);
}

FileDescriptor opened(const std::filesystem::path& input)
{
    auto file = openRegularFile(input);
    if (!file) throw ImageOptimizerError::unreadableImage();
    return std::move(*file);
}

MemoryBudget::Share shareFor(std::int64_t need, const OptimizerServices& services)
{
    if (!services.memory) return {};
    auto share = services.memory->take(need, services.stop);
    if (!share) raise({Kind::stopped});
    return std::move(*share);
}

} // namespace

OpenedPicture::OpenedPicture(const Job& job)
    : m_job(job), m_file(opened(job.input)), m_stamp(fileStamp(m_file.get())), m_work(workFor(job.services))
{
    open();
}

void OpenedPicture::open()
{
    m_head = got(m_work->open(m_file.get(), m_job.settings));
    m_share = shareFor(m_head.memoryNeed, m_job.services);
}

void OpenedPicture::proveReadable()
{
    m_isKept = got(m_work->proveReadable());
    if (!m_isKept) m_share = {};
}

void OpenedPicture::openAgain()
{
    if (!m_isKept) open();
}

WorkResult<PictureSize> OpenedPicture::encode(const OutputFile& output, const std::string& typeIdentifier)
{
    return blamed(m_work->encode(output.descriptor(), typeIdentifier));
}

WorkResult<PictureSize> OpenedPicture::writePpm(const OutputFile& output)
{
    return blamed(m_work->writePpm(output.descriptor()));
}

WorkResult<bool> OpenedPicture::copy(const OutputFile& output)
{
    return blamed(m_work->copy(output.descriptor()));
}

void OpenedPicture::blameInput()
{
    if (!m_job.services.stop.stop_requested()) got(m_work->findDamage());
}

std::vector<std::string> OpenedPicture::losses(const OutputFile& output, const std::string& typeIdentifier)
{
    return m_work->losses(output.descriptor(), typeIdentifier);
}

bool OpenedPicture::isWhole(const OutputFile& output)
{
    return m_work->isWhole(output.descriptor());
}

void OpenedPicture::close()
{
    m_work->close();
    m_share = {};
}

} // namespace lumora::ImageOptimizer
