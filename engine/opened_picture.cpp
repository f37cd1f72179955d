// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/opened_picture.h"

#include "engine/image_transform.h"
#include "engine/memory_need.h"
#include "pixels/decoding.h"
#include "records/errors.h"

#include <new>

namespace lumora::ImageOptimizer {
namespace {

[[noreturn]] void throwReadingFailure(const Error& error)
{
    if (error.cause == Error::Cause::memory) throw PlatformError::notEnoughMemory();
    throw ImageOptimizerError::unreadableImage();
}

template <class T>
T readable(Result<T> result)
{
    if (!result) throwReadingFailure(result.error());
    return std::move(*result);
}

// Turning, reducing and recolouring.
Image finalImage(const ImageSource& source, const OptimizerSettings& settings)
{
    const Image upright = readable(turned(transformedImage(orientedImage(source, source.image()), settings)));
    return settings.removeColorManagement ? upright.withoutProfile() : upright;
}

MemoryBudget::Share shareFor(std::int64_t need, const OptimizerServices& services)
{
    if (!services.memory) return {};
    auto share = services.memory->take(need, services.stop);
    if (!share) throw PlatformError("The work was stopped.");
    return std::move(*share);
}

} // namespace

OpenedPicture::OpenedPicture(const Job& job) : m_job(job)
{
    open();
}

void OpenedPicture::open()
{
    m_source = readable(ImageSource::open(m_job.input));
    m_need = memoryNeed(*m_source, m_job.settings);
    m_share = shareFor(m_need, m_job.services);
    m_image = finalImage(*m_source, m_job.settings);
}

void OpenedPicture::proveReadable()
{
    if (m_need <= MemoryBudget::uncounted) {
        m_image = readable(decode(*m_image));
    } else {
        readable(readThrough(*m_image));
        close();
    }
}

void OpenedPicture::close()
{
    closeButShare();
    m_share = {};
}

void OpenedPicture::closeButShare()
{
    m_image.reset();
    m_source.reset();
}

void OpenedPicture::openAgain()
{
    if (!m_image) open();
}

void OpenedPicture::blameInput()
{
    if (m_image && m_image->outcome()) {
        if (const auto error = m_image->outcome()->error()) throwReadingFailure(*error);
        if (m_image->outcome()->isComplete()) return;
    }
    if (m_job.services.stop.stop_requested() || (m_image && m_image->isInMemory())) return;
    // Whoever took the rows may have given up before it came to the damaged ones.
    close();
    open();
    readable(readThrough(*m_image));
}

} // namespace lumora::ImageOptimizer
