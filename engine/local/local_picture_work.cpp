// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/local_picture_work.h"

#include "engine/local/destination_properties.h"
#include "engine/local/image_transform.h"
#include "engine/local/left_behind.h"
#include "engine/local/lossless_copy.h"
#include "engine/local/memory_need.h"
#include "engine/memory_budget.h"
#include "formats/image_destination.h"
#include "formats/ppm_writer.h"
#include "formats/rgba_writer.h"
#include "pixels/decoding.h"

#include <fcntl.h>

#include <new>

namespace lumora::ImageOptimizer {
namespace {

using Kind = WorkError::Kind;

WorkError readingError(const Error& error)
{
    return {error.cause == Error::Cause::memory ? Kind::memory : Kind::unreadable};
}

WorkError writingError(Kind kind, const Error& error)
{
    if (error.cause == Error::Cause::memory) return {Kind::memory};
    return {kind, error.reason};
}

FileDescriptor another(int descriptor)
{
    return FileDescriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
}

// Whatever runs out of memory on the way.
template <class Work>
auto inMemory(Work work) -> decltype(work())
try {
    return work();
} catch (const std::bad_alloc&) {
    return WorkError{Kind::memory};
}

bool keepsFrame(const ImageSource& source, const OptimizerSettings& settings)
{
    const Image image = source.image();
    return source.orientation() == 1 && scaleFactor(image.width(), image.height(), settings) >= 1;
}

PictureSize sizeOf(const Image& image)
{
    return {image.width(), image.height()};
}

} // namespace

WorkResult<PictureHead> LocalPictureWork::open(int file, const OptimizerSettings& settings)
{
    close();
    return inMemory([&]() -> WorkResult<PictureHead> {
        m_file = another(file);
        m_settings.emplace(settings);
        auto source = ImageSource::open(another(file));
        if (!source) return readingError(source.error());
        m_source = std::move(*source);
        m_need = memoryNeed(*m_source, settings);
        return PictureHead{m_source->typeIdentifier().value_or(std::string()), m_need,
                           keepsFrame(*m_source, settings)};
    });
}

Result<Image> LocalPictureWork::image()
{
    if (m_image) return *m_image;
    auto upright = turned(transformedImage(orientedImage(*m_source, m_source->image()), *m_settings));
    if (!upright) return upright;
    m_image = m_settings->removeColorManagement ? upright->withoutProfile() : *upright;
    return *m_image;
}

WorkResult<bool> LocalPictureWork::proveReadable()
{
    return inMemory([&]() -> WorkResult<bool> {
        const auto rows = image();
        if (!rows) return readingError(rows.error());
        if (m_need <= MemoryBudget::uncounted) {
            auto decoded = decode(*rows);
            if (!decoded) return readingError(decoded.error());
            m_image = std::move(*decoded);
            return true;
        }
        const auto status = readThrough(*rows);
        close();
        if (!status) return readingError(status.error());
        return false;
    });
}

WorkResult<PictureSize> LocalPictureWork::encode(int output, const std::string& typeIdentifier)
{
    return inMemory([&]() -> WorkResult<PictureSize> {
        const auto rows = image();
        if (!rows) return readingError(rows.error());
        OutputFile file(another(output), {});
        auto destination = ImageDestination::create(file, typeIdentifier);
        if (!destination) return WorkError{Kind::unsupported};
        destination->addImage(*rows, destinationProperties(*m_settings, m_source->metadata()));
        m_size = sizeOf(*rows);
        if (const auto status = destination->finalize(); !status)
            return writingError(Kind::writing, status.error());
        return m_size;
    });
}

WorkResult<PictureSize> LocalPictureWork::writePpm(int output)
{
    return inMemory([&]() -> WorkResult<PictureSize> {
        const auto rows = image();
        if (!rows) return readingError(rows.error());
        OutputFile file(another(output), {});
        m_size = sizeOf(*rows);
        const auto written = lumora::writePpm(*rows, file);
        if (written) return m_size;
        const bool isDrawn = written.error().step == PpmError::Step::writing;
        return writingError(isDrawn ? Kind::writing : Kind::drawing, written.error().error);
    });
}

WorkResult<bool> LocalPictureWork::copy(int output)
{
    return inMemory([&]() -> WorkResult<bool> {
        if (!m_source) return false;
        OutputFile file(another(output), {});
        const auto isCopied = writeLosslessCopy(*m_source, m_file.get(), *m_settings, file);
        if (!isCopied) return writingError(Kind::writing, isCopied.error());
        return *isCopied;
    });
}

WorkResult<Done> LocalPictureWork::findDamage()
{
    return inMemory([&]() -> WorkResult<Done> {
        if (m_image && m_image->outcome()) {
            if (const auto error = m_image->outcome()->error()) return readingError(*error);
            if (m_image->outcome()->isComplete()) return Done{};
        }
        if (m_image && m_image->isInMemory()) return Done{};
        // Whoever took the rows may have given up before it came to the damaged ones.
        m_image.reset();
        m_source.reset();
        auto source = ImageSource::open(another(m_file.get()));
        if (!source) return readingError(source.error());
        m_source = std::move(*source);
        const auto rows = image();
        const auto status = rows ? readThrough(*rows) : Status(rows.error());
        if (!status) return readingError(status.error());
        return Done{};
    });
}

std::vector<std::string> LocalPictureWork::losses(int output, const std::string& typeIdentifier)
{
    if (!m_source || !m_image) return {};
    return leftBehind(*m_source, *m_image, typeIdentifier, another(output), *m_settings);
}

bool LocalPictureWork::isWhole(int output)
{
    m_image.reset();
    m_source.reset();
    const auto written = ImageSource::open(another(output));
    if (!written || m_size != sizeOf(written->image())) return false;
    // A decoder that can make fewer pixels of the data reads all of it nevertheless.
    constexpr int mostReduced = 8;
    const auto rows = written->image().reduced(mostReduced);
    return rows && readThrough(*rows);
}

WorkResult<PictureLook> LocalPictureWork::look()
{
    if (!m_source) return WorkError{Kind::unreadable};
    return PictureLook{sizeOf(orientedImage(*m_source, m_source->image())), m_source->metadata().profileName};
}

WorkResult<Done> LocalPictureWork::drawPart(int output, const PicturePart& part)
{
    return inMemory([&]() -> WorkResult<Done> {
        if (!m_source) return WorkError{Kind::unreadable};
        const Image picture = orientedImage(*m_source, m_source->image());
        m_image.reset();
        m_source.reset();
        if (!isPartOf(part, picture.width(), picture.height())) return WorkError{Kind::unreadable};
        OutputFile file(another(output), {});
        const auto status = writeRgba(picture, part, file);
        if (!status) return readingError(status.error());
        return Done{};
    });
}

void LocalPictureWork::close()
{
    m_image.reset();
    m_source.reset();
    m_settings.reset();
    m_file = FileDescriptor();
}

} // namespace lumora::ImageOptimizer
