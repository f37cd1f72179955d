// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_codec.h"
#include "bmp/bmp_layout.h"
#include "bmp/little_endian.h"

#include <array>
#include <bit>

namespace lumora {
namespace {

using Row = std::span<std::byte>; // of the result

// One channel of a masked pixel, scaled to 8 bits.
class ChannelReader
{
public:
    explicit ChannelReader(std::uint32_t mask) : m_mask(mask)
    {
        const int bits = std::popcount(mask);
        const int dropped = bits > 8 ? bits - 8 : 0;
        m_shift = mask == 0 ? 0U : static_cast<unsigned>(std::countr_zero(mask) + dropped);
        const unsigned most = (1U << static_cast<unsigned>(bits - dropped)) - 1;
        for (unsigned value = 0; most > 0 && value <= most; ++value) {
            m_scaled[value] = static_cast<std::byte>((value * 255 + most / 2) / most);
        }
    }

    std::byte operator()(std::uint32_t pixel) const { return m_scaled[(pixel & m_mask) >> m_shift]; }

private:
    std::uint32_t m_mask;
    unsigned m_shift;
    std::array<std::byte, 256> m_scaled{};
};

class PixelReader
{
public:
    explicit PixelReader(const BmpLayout& layout)
        : m_layout(layout), m_red(layout.masks[0]), m_green(layout.masks[1]), m_blue(layout.masks[2]),
          m_alpha(layout.masks[3])
    {
    }

    // False for a colour beyond the palette.
    bool readRow(std::span<const std::byte> stored, Row row) const
    {
        switch (m_layout.header.bitsPerPixel) {
        case 24:
            readTriples(stored, row);
            return true;
        case 16:
            readMasked<std::uint16_t>(stored, row);
            return true;
        case 32:
            readMasked<std::uint32_t>(stored, row);
            return true;
        default:
            return readPacked(stored, row);
        }
    }

    bool readIndices(std::span<const std::uint8_t> indices, Row row) const
    {
        for (std::size_t x = 0; x < indices.size(); ++x) {
            if (!putColor(indices[x], row.subspan(x * 3, 3))) return false;
        }
        return true;
    }

private:
    bool putColor(std::size_t index, Row pixel) const
    {
        if (index >= m_layout.palette.size()) return false;
        const BmpColor& color = m_layout.palette[index];
        pixel[0] = color.red;
        pixel[1] = color.green;
        pixel[2] = color.blue;
        return true;
    }

    static void readTriples(std::span<const std::byte> stored, Row row)
    {
        for (std::size_t at = 0; at < row.size(); at += 3) {
            row[at] = stored[at + 2];
            row[at + 1] = stored[at + 1];
            row[at + 2] = stored[at];
        }
    }

    template <class Unsigned>
    void readMasked(std::span<const std::byte> stored, Row row) const
    {
        const auto channels = static_cast<std::size_t>(m_layout.header.channels());
        for (std::size_t at = 0, x = 0; at < row.size(); at += channels, ++x) {
            const std::uint32_t pixel = littleEndianAt<Unsigned>(stored, x * sizeof(Unsigned));
            row[at] = m_red(pixel);
            row[at + 1] = m_green(pixel);
            row[at + 2] = m_blue(pixel);
            if (channels == 4) row[at + 3] = m_alpha(pixel);
        }
    }

    // 1 to 8 bits a pixel, the first pixel in the highest bits.
    bool readPacked(std::span<const std::byte> stored, Row row) const
    {
        const auto bits = static_cast<std::size_t>(m_layout.header.bitsPerPixel);
        const std::size_t mask = (std::size_t{1} << bits) - 1;
        for (std::size_t x = 0; x * 3 < row.size(); ++x) {
            const auto byte = std::to_integer<std::size_t>(stored[x * bits / 8]);
            const std::size_t index = (byte >> (8 - bits - x * bits % 8)) & mask;
            if (!putColor(index, row.subspan(x * 3, 3))) return false;
        }
        return true;
    }

    const BmpLayout& m_layout;
    ChannelReader m_red;
    ChannelReader m_green;
    ChannelReader m_blue;
    ChannelReader m_alpha;
};

std::size_t storedRowBits(const BmpLayout& layout)
{
    return static_cast<std::size_t>(layout.header.width * layout.header.bitsPerPixel);
}

std::size_t storedRowSize(const BmpLayout& layout)
{
    return (storedRowBits(layout) + 7) / 8;
}

// Rows begin at multiples of four bytes.
std::size_t stride(const BmpLayout& layout)
{
    return (storedRowBits(layout) + 31) / 32 * 4;
}

// The padding of the last row may be missing.
bool isCutOff(const BmpLayout& layout)
{
    const auto height = static_cast<std::size_t>(layout.header.height);
    return layout.coding == BmpCoding::plain &&
           layout.pixels.size() < stride(layout) * (height - 1) + storedRowSize(layout);
}

} // namespace

struct BmpRows::State
{
    explicit State(BmpLayout of) : layout(std::move(of)), reader(layout) {}

    Status readIndices()
    {
        if (layout.coding == BmpCoding::plain || !indices.empty()) return Done{};
        auto decoded = decodeBmpRuns(layout);
        if (!decoded) return decoded.error();
        indices = std::move(*decoded);
        return Done{};
    }

    bool readStoredRow(std::size_t storedRow, Row row) const
    {
        const auto width = static_cast<std::size_t>(layout.header.width);
        if (layout.coding != BmpCoding::plain)
            return reader.readIndices(std::span(indices).subspan(storedRow * width, width), row);
        return reader.readRow(layout.pixels.subspan(storedRow * stride(layout), storedRowSize(layout)), row);
    }

    BmpLayout layout;
    PixelReader reader;
    std::vector<std::uint8_t> indices; // of a run-length coded picture, once a row was asked for
};

BmpRows::BmpRows(std::unique_ptr<State> state) : m_state(std::move(state)) {}
BmpRows::BmpRows(BmpRows&&) noexcept = default;
BmpRows& BmpRows::operator=(BmpRows&&) noexcept = default;
BmpRows::~BmpRows() = default;

Result<BmpRows> BmpRows::open(std::span<const std::byte> file)
{
    auto layout = readBmpLayout(file);
    if (!layout) return layout.error();
    if (isCutOff(*layout)) return Error{"BMP pixels cut off"};
    return BmpRows(std::make_unique<State>(std::move(*layout)));
}

const BmpHeader& BmpRows::header() const
{
    return m_state->layout.header;
}

std::size_t BmpRows::rowBytes() const
{
    return static_cast<std::size_t>(header().width * header().channels());
}

Status BmpRows::read(std::int64_t y, std::span<std::byte> row)
{
    if (const auto status = m_state->readIndices(); !status) return status.error();
    const std::int64_t stored = m_state->layout.isTopDown ? y : header().height - 1 - y;
    if (!m_state->readStoredRow(static_cast<std::size_t>(stored), row))
        return Error{"BMP colour beyond the palette"};
    return Done{};
}

Result<std::vector<std::byte>> decodeBmp(std::span<const std::byte> file)
{
    auto bmp = BmpRows::open(file);
    if (!bmp) return bmp.error();
    const std::size_t rowBytes = bmp->rowBytes();
    std::vector<std::byte> rows(rowBytes * static_cast<std::size_t>(bmp->header().height));
    for (std::int64_t y = 0; y < bmp->header().height; ++y) {
        const auto row = std::span(rows).subspan(static_cast<std::size_t>(y) * rowBytes, rowBytes);
        if (const auto status = bmp->read(y, row); !status) return status.error();
    }
    return rows;
}

} // namespace lumora
