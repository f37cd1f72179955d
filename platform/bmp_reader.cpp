// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/bmp_codec.h"
#include "platform/bmp_layout.h"
#include "platform/little_endian.h"

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

// The result, and where each row of the file goes in it.
struct Picture
{
    explicit Picture(const BmpLayout& layout)
        : height(static_cast<std::size_t>(layout.header.height)),
          rowSize(static_cast<std::size_t>(layout.header.width * layout.header.channels())),
          isTopDown(layout.isTopDown), rows(rowSize * height)
    {
    }
    Row rowOf(std::size_t storedRow)
    {
        const std::size_t y = isTopDown ? storedRow : height - 1 - storedRow;
        return Row(rows).subspan(y * rowSize, rowSize);
    }

    std::size_t height;
    std::size_t rowSize;
    bool isTopDown;
    std::vector<std::byte> rows;
};

Error paletteError()
{
    return {"BMP colour beyond the palette"};
}

Result<std::vector<std::byte>> decodePlain(const BmpLayout& layout)
{
    const auto rowBits = static_cast<std::size_t>(layout.header.width * layout.header.bitsPerPixel);
    const std::size_t rowSize = (rowBits + 7) / 8;
    const std::size_t stride = (rowBits + 31) / 32 * 4; // rows begin at multiples of four bytes
    const auto height = static_cast<std::size_t>(layout.header.height);
    // The padding of the last row may be missing.
    if (layout.pixels.size() < stride * (height - 1) + rowSize) return Error{"BMP pixels cut off"};

    const PixelReader reader(layout);
    Picture picture(layout);
    for (std::size_t y = 0; y < height; ++y) {
        if (!reader.readRow(layout.pixels.subspan(y * stride, rowSize), picture.rowOf(y)))
            return paletteError();
    }
    return std::move(picture.rows);
}

Result<std::vector<std::byte>> decodeRuns(const BmpLayout& layout)
{
    const auto indices = decodeBmpRuns(layout);
    if (!indices) return indices.error();
    const auto width = static_cast<std::size_t>(layout.header.width);
    const PixelReader reader(layout);
    Picture picture(layout);
    for (std::size_t y = 0; y < picture.height; ++y) {
        const auto row = std::span(*indices).subspan(y * width, width);
        if (!reader.readIndices(row, picture.rowOf(y))) return paletteError();
    }
    return std::move(picture.rows);
}

} // namespace

Result<std::vector<std::byte>> decodeBmp(std::span<const std::byte> file)
{
    const auto layout = readBmpLayout(file);
    if (!layout) return layout.error();
    return layout->coding == BmpCoding::plain ? decodePlain(*layout) : decodeRuns(*layout);
}

} // namespace lumora
