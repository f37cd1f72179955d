// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/picture_reader.h"

#include "engine/worker/remote_picture_work.h"
#include "system/mapped_file.h"
#include "system/memory_file.h"
#include "system/regular_file.h"
#include "types/format.h"

#include <algorithm>
#include <memory>
#include <unistd.h>
#include <utility>

namespace lumora {
namespace {

using ImageOptimizer::WorkError;
using ImageOptimizer::WorkResult;

constexpr std::int64_t pixelBytes = 4;

QString sentence(const QString& name, const WorkError& error)
{
    switch (error.kind) {
    case WorkError::Kind::memory:
        return QStringLiteral("There is not enough memory to show %1.").arg(name.toLower());
    case WorkError::Kind::notStarted:
        return QStringLiteral("%1 cannot be shown: the worker could not be started.").arg(name);
    default:
        return QStringLiteral("%1 cannot be shown: it is damaged, or no picture.").arg(name);
    }
}

QString formatName(const std::string& typeIdentifier)
{
    const Format* const format = formatWithIdentifier(typeIdentifier);
    if (!format) return {};
    const auto extension = format->preferredExtension;
    if (extension == "webp") return QStringLiteral("WebP");
    return QString::fromUtf8(extension.data(), static_cast<qsizetype>(extension.size())).toUpper();
}

// Nothing that a worker says is believed.
bool isPlausible(const ImageOptimizer::PictureSize& size)
{
    return size.first >= 1 && size.second >= 1 && size.first <= maximumDecodedPixels / size.second;
}

} // namespace

// The file and who works on it, on the reader's thread.
class PictureReader::Work
{
public:
    Work(PictureReader& reader, const std::stop_token& stop)
        : m_reader(reader), m_work(reader.m_processes, stop)
    {
    }

    WorkResult<PictureFacts> open(const std::filesystem::path& path)
    {
        auto file = openRegularFile(path);
        if (!file) return WorkError{WorkError::Kind::unreadable};
        m_file = std::move(*file);
        const auto head = m_work.open(m_file.get(), asItIs());
        if (!head) return head.error();
        auto look = m_work.look();
        if (!look) return look.error();
        if (!isPlausible(look->size)) return WorkError{WorkError::Kind::unreadable};
        m_isOpen = true;
        const auto stamp = fileStamp(m_file.get());
        return PictureFacts{
            .size = QSize(static_cast<int>(look->size.first), static_cast<int>(look->size.second)),
            .format = formatName(head->typeIdentifier),
            .profile = QString::fromStdString(look->profile).simplified(),
            .bytes = stamp ? stamp->size : 0};
    }

    WorkResult<QImage> draw(const PicturePart& part)
    {
        const std::int64_t bytes = std::int64_t{part.columns} * part.rows * pixelBytes;
        const auto output = makeMemoryFile(static_cast<std::size_t>(bytes));
        if (!output) return WorkError{WorkError::Kind::memory};
        if (!std::exchange(m_isOpen, false)) {
            const auto head = m_work.open(m_file.get(), asItIs());
            if (!head) return head.error();
        }
        m_reader.setInWork(output->get(), bytes);
        const auto drawn = m_work.drawPart(output->get(), part);
        m_reader.unsetInWork();
        m_work.close();
        if (!drawn) return drawn.error();
        return pictureIn(output->get(), part);
    }

private:
    static OptimizerSettings asItIs() { return ImageOptimizer::PixelSettings{}.settings(); }

    // In the form that is painted fastest.
    static WorkResult<QImage> pictureIn(int file, const PicturePart& part)
    {
        const auto rows = MappedFile::map(file);
        if (!rows) return WorkError{WorkError::Kind::memory};
        const QImage mapped(reinterpret_cast<const uchar*>(rows->bytes().data()), part.columns, part.rows,
                            static_cast<qsizetype>(part.columns * pixelBytes),
                            QImage::Format_RGBA8888_Premultiplied);
        QImage picture = mapped.convertToFormat(QImage::Format_ARGB32_Premultiplied);
        if (picture.isNull()) return WorkError{WorkError::Kind::memory};
        return picture;
    }

    PictureReader& m_reader;
    ImageOptimizer::RemotePictureWork m_work;
    FileDescriptor m_file;
    bool m_isOpen = false;
};

PictureReader::PictureReader(QString name, std::function<PictureFile()> find,
                             const std::filesystem::path& worker, QObject* parent)
    : QObject(parent), m_name(std::move(name)), m_find(std::move(find)), m_processes(worker)
{
    m_thread = std::jthread([this](const std::stop_token& stop) { run(stop); });
}

PictureReader::~PictureReader()
{
    m_thread.request_stop();
    m_thread.join();
}

void PictureReader::want(const PicturePart& part)
{
    {
        const std::lock_guard lock(m_mutex);
        m_part = part;
    }
    m_wanted.notify_one();
}

std::optional<double> PictureReader::progress() const
{
    const std::lock_guard lock(m_mutex);
    if (m_output < 0) return std::nullopt;
    // The worker's descriptor shares its position.
    const auto written = static_cast<double>(::lseek(m_output, 0, SEEK_CUR));
    return std::clamp(written / static_cast<double>(m_outputBytes), 0.0, 1.0);
}

void PictureReader::setInWork(int output, std::int64_t bytes)
{
    const std::lock_guard lock(m_mutex);
    m_output = output;
    m_outputBytes = bytes;
}

void PictureReader::unsetInWork()
{
    setInWork(-1, 0);
}

std::optional<PicturePart> PictureReader::nextPart(const std::stop_token& stop)
{
    std::unique_lock lock(m_mutex);
    if (!m_wanted.wait(lock, stop, [this] { return m_part.has_value(); }) || stop.stop_requested())
        return std::nullopt;
    return std::exchange(m_part, std::nullopt);
}

void PictureReader::run(const std::stop_token& stop)
{
    const auto fail = [this](const QString& reason) {
        m_mainThread.post([this, reason] { Q_EMIT failed(reason); });
    };
    const PictureFile place = m_find();
    if (!place.path) return fail(place.reason);
    Work work(*this, stop);
    auto facts = work.open(*place.path);
    if (!facts) return fail(sentence(m_name, facts.error()));
    facts->isInTrash = place.isInTrash;
    m_mainThread.post([this, opened = *facts] { Q_EMIT this->opened(opened); });
    while (const auto part = nextPart(stop)) {
        const auto pixels = work.draw(*part);
        if (stop.stop_requested()) return;
        if (!pixels) return fail(sentence(m_name, pixels.error()));
        m_mainThread.post([this, part = *part, image = *pixels] { Q_EMIT drawn(part, image); });
    }
}

} // namespace lumora
