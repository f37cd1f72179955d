// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "turned_rows.h"

#include "pixels/stored_form.h"
#include "rgba_pixels.h"
#include "rows_ahead.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>

namespace lumora {
namespace {

class PassedRows : public RowMaker
{
public:
    explicit PassedRows(std::size_t rowBytes) : m_rowBytes(rowBytes) {}

    Status make(const RowProvider& source, int first, int count, std::uint8_t* rows) override
    {
        const auto from = source(first, count);
        if (!from) return from.error();
        copyRows(*from, count, m_rowBytes, rows);
        return Done{};
    }

private:
    std::size_t m_rowBytes;
};

class MirroredRows : public RowMaker
{
public:
    MirroredRows(int width, std::size_t pixelBytes) : m_width(width), m_pixelBytes(pixelBytes) {}

    Status make(const RowProvider& source, int first, int count, std::uint8_t* rows) override
    {
        const auto from = source(first, count);
        if (!from) return from.error();
        const std::size_t rowBytes = static_cast<std::size_t>(m_width) * m_pixelBytes;
        for (int y = 0; y < count; ++y) {
            const std::uint8_t* pixel = from->first + y * from->stride + rowBytes;
            for (int x = 0; x < m_width; ++x, rows += m_pixelBytes)
                std::memcpy(rows, pixel -= m_pixelBytes, m_pixelBytes);
        }
        return Done{};
    }

private:
    int m_width;
    std::size_t m_pixelBytes;
};

// Where the upright pixel (x, y) is stored: at origin + x * columnStep + y * rowStep.
struct Turn
{
    std::ptrdiff_t origin;
    std::ptrdiff_t columnStep;
    std::ptrdiff_t rowStep;
};

Turn turnOf(PixelSize stored, Orientation orientation)
{
    const std::ptrdiff_t w = stored.width;
    const std::ptrdiff_t h = stored.height;
    switch (orientation) {
    case 3:
        return {w * h - 1, -1, -w};
    case 4:
        return {w * (h - 1), 1, -w};
    case 5:
        return {0, w, 1};
    case 6:
        return {w * (h - 1), -w, 1};
    case 7:
        return {w * h - 1, -w, -1};
    default:
        return {w - 1, w, -1};
    }
}

class TurnedRows : public RowMaker
{
public:
    TurnedRows(PixelSize stored, std::size_t pixelBytes, Orientation orientation)
        : m_stored(stored), m_pixelBytes(pixelBytes), m_turn(turnOf(stored, orientation)),
          m_width(orientation >= 5 ? stored.height : stored.width)
    {
    }

    Status make(const RowProvider& source, int first, int count, std::uint8_t* rows) override
    {
        if (!m_pixels) {
            if (auto status = load(source); !status) return status;
        }
        switch (m_pixelBytes) {
        case 1:
            turn<1>(first, count, rows);
            break;
        case 3:
            turn<3>(first, count, rows);
            break;
        case 4:
            turn<4>(first, count, rows);
            break;
        default:
            turn<0>(first, count, rows);
        }
        return Done{};
    }

private:
    Status load(const RowProvider& source)
    {
        const std::size_t rowBytes = static_cast<std::size_t>(m_stored.width) * m_pixelBytes;
        PageBytes pixels = allocatePages(rowBytes * static_cast<std::size_t>(m_stored.height));
        PassedRows passed(rowBytes);
        for (int top = 0; top < m_stored.height; top += streamedRows) {
            const int count = std::min(streamedRows, m_stored.height - top);
            std::uint8_t* const rows = pixels.get() + static_cast<std::size_t>(top) * rowBytes;
            if (auto status = passed.make(source, top, count, rows); !status) return status;
        }
        m_pixels = std::move(pixels);
        return Done{};
    }

    // A size known to the compiler makes each pixel one load and store; 0 stands for any other. Columns are
    // the outer loop: a turned one is a row of what is held.
    template <std::size_t knownBytes>
    void turn(int first, int count, std::uint8_t* rows) const
    {
        const std::size_t bytes = knownBytes > 0 ? knownBytes : m_pixelBytes;
        const auto width = static_cast<std::size_t>(m_width);
        for (std::size_t x = 0; x < width; ++x) {
            std::ptrdiff_t at =
                m_turn.origin + static_cast<std::ptrdiff_t>(x) * m_turn.columnStep + first * m_turn.rowStep;
            std::uint8_t* to = rows + x * bytes;
            for (int y = 0; y < count; ++y, at += m_turn.rowStep, to += width * bytes)
                std::memcpy(to, m_pixels.get() + static_cast<std::size_t>(at) * bytes, bytes);
        }
    }

    PixelSize m_stored;
    std::size_t m_pixelBytes;
    Turn m_turn;
    int m_width; // of the upright picture
    PageBytes m_pixels;
};

} // namespace

std::unique_ptr<RowMaker> passedRows(std::size_t rowBytes)
{
    return std::make_unique<PassedRows>(rowBytes);
}

std::unique_ptr<RowMaker> turnedRows(PixelSize stored, std::size_t pixelBytes, Orientation orientation)
{
    if (orientation < 2 || orientation > 8)
        return passedRows(static_cast<std::size_t>(stored.width) * pixelBytes);
    if (orientation == 2) return std::make_unique<MirroredRows>(stored.width, pixelBytes);
    return std::make_unique<TurnedRows>(stored, pixelBytes, orientation);
}

Result<VipsImagePtr> uprightPicture(VipsImage* stored, Orientation orientation,
                                    const std::shared_ptr<ReadOutcome>& outcome)
{
    StreamForm form = streamFormOf(stored);
    const PixelSize size{form.width, form.height};
    if (orientation >= 5) std::swap(form.width, form.height);
    auto turning = turnedRows(size, pixelBytesOf(stored), orientation);
    auto upright = streamedPicture(stored, form, readingAhead(stored, std::move(turning)), outcome);
    if (upright) copyComponentFields(stored, upright->get());
    return upright;
}

} // namespace lumora
