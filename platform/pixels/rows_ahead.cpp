// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "rows_ahead.h"

#include "system/side_by_side.h"
#include "vips_operation.h"

#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <condition_variable>
#include <mutex>
#include <new>
#include <optional>
#include <stop_token>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace lumora {
namespace {

// Smaller ones are done before a thread is worth its start.
constexpr std::int64_t leastPixels = 500'000;
// Of very wide ones, strips are not worth what they hold.
constexpr std::size_t mostStripBytes = std::size_t{8} << 20U;

class AheadReading
{
public:
    // Throws std::system_error where there is no thread to be had.
    explicit AheadReading(VipsImage* source)
        : m_source(newReference(source)), m_rowBytes(rowBytesOf(source)),
          m_height(vips_image_get_height(source)),
          m_thread([this](const std::stop_token& stop) { run(stop); })
    {
    }

    // As a RowProvider; the strips above are given up.
    Result<RowSpan> rows(int first, int count)
    {
        const int strip = first / streamedRows;
        const int row = first % streamedRows;
        std::unique_lock lock(m_mutex);
        if (strip < m_first || row + count > streamedRows || first + count > m_height)
            return Error{"rows of another strip"};
        m_first = strip;
        m_hasChanged.notify_all();
        m_hasChanged.wait(lock, [&] { return m_next > strip || m_error; });
        if (m_next <= strip) return *m_error;
        return RowSpan{bytesOf(strip).data() + static_cast<std::size_t>(row) * m_rowBytes,
                       static_cast<std::ptrdiff_t>(m_rowBytes)};
    }

private:
    // The one in use, the one being read, and two that make up for strips that take longer than others.
    static constexpr int mostStrips = 4;

    std::vector<std::uint8_t>& bytesOf(int strip)
    {
        return m_strips[static_cast<std::size_t>(strip % mostStrips)];
    }

    void run(const std::stop_token& stop) noexcept
    {
        std::optional<Error> error;
        try {
            if (const auto status = read(stop); !status) error = status.error();
        } catch (const std::bad_alloc&) {
            error = outOfMemory();
        }
        vips_thread_shutdown();
        const std::scoped_lock lock(m_mutex);
        m_error = std::move(error);
        m_hasChanged.notify_all();
    }

    Status read(const std::stop_token& stop)
    {
        const RegionPtr region = regionForEachRowOnce(m_source.get());
        for (int strip = 0; strip * streamedRows < m_height && mayRead(strip, stop); ++strip) {
            const int top = strip * streamedRows;
            const int count = std::min(streamedRows, m_height - top);
            const auto rows = rowsOf(region.get(), top, count);
            if (!rows) return rows.error();
            std::vector<std::uint8_t>& bytes = bytesOf(strip);
            bytes.resize(m_rowBytes * static_cast<std::size_t>(std::min(streamedRows, m_height)));
            copyRows(*rows, count, m_rowBytes, bytes.data());
            const std::scoped_lock lock(m_mutex);
            m_next = strip + 1;
            m_hasChanged.notify_all();
        }
        return Done{};
    }

    // Waits for room; false when nobody wants the rest any more.
    bool mayRead(int strip, const std::stop_token& stop)
    {
        std::unique_lock lock(m_mutex);
        return m_hasChanged.wait(lock, stop, [&] { return strip < m_first + mostStrips; });
    }

    const VipsImagePtr m_source;
    const std::size_t m_rowBytes;
    const int m_height;
    std::mutex m_mutex;
    std::condition_variable_any m_hasChanged;
    int m_first = 0;              // strip in use; guarded by m_mutex, as are
    int m_next = 0;               // the one after the last that was read
    std::optional<Error> m_error; // and why there is no more
    // Each goes from one thread to the other with these numbers.
    std::array<std::vector<std::uint8_t>, mostStrips> m_strips;
    std::jthread m_thread;
};

class ReadingAhead : public RowMaker
{
public:
    ReadingAhead(VipsImage* source, std::unique_ptr<RowMaker> maker)
        : m_source(newReference(source)), m_maker(std::move(maker))
    {
    }

    Status make(const RowProvider& source, int first, int count, std::uint8_t* rows) override
    {
        if (m_source) m_ahead = rowsAhead(std::exchange(m_source, nullptr).get());
        return m_maker->make(m_ahead ? m_ahead : source, first, count, rows);
    }

private:
    VipsImagePtr m_source; // until the first row is made
    std::unique_ptr<RowMaker> m_maker;
    RowProvider m_ahead;
};

} // namespace

RowProvider rowsAhead(VipsImage* source)
{
    const std::int64_t pixels = std::int64_t{vips_image_get_width(source)} * vips_image_get_height(source);
    const bool isUseful = pixels >= leastPixels && rowBytesOf(source) * streamedRows <= mostStripBytes;
    if (usedProcessors() < 2 || !isUseful) return {};
    try {
        return [reading = std::make_shared<AheadReading>(source)](int first, int count) {
            return reading->rows(first, count);
        };
    } catch (const std::system_error&) {
        return {};
    }
}

std::unique_ptr<RowMaker> readingAhead(VipsImage* source, std::unique_ptr<RowMaker> maker)
{
    return std::make_unique<ReadingAhead>(source, std::move(maker));
}

} // namespace lumora
