// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Run-length codings of BMP: pairs of a count and a value, with escapes for the end of a row, the end of the
// picture, a jump, and a stretch of single pixels that is padded to an even number of bytes.
#include "bmp/bmp_layout.h"

#include <algorithm>

namespace lumora {
namespace {

std::size_t paddedTo(std::size_t multiple, std::size_t pixels)
{
    return (pixels + multiple - 1) / multiple * multiple;
}

class RunDecoder
{
public:
    explicit RunDecoder(const BmpLayout& layout)
        : m_input(layout.pixels), m_hasNibbles(layout.coding == BmpCoding::runs4),
          m_width(static_cast<std::size_t>(layout.header.width)),
          m_paddedWidth(paddedTo(m_hasNibbles ? 8 : 4, m_width)),
          m_height(static_cast<std::size_t>(layout.header.height)), m_indices(m_width * m_height)
    {
    }

    // False for damaged data. Data may end without the mark for it once the last row is full.
    bool run()
    {
        while (!m_isEnded) {
            if (m_position + 2 > m_input.size()) return isFull();
            const std::size_t count = take();
            const std::size_t value = take();
            if (!(count > 0 ? repeat(count, value) : escape(value))) return false;
        }
        return true;
    }

    std::vector<std::uint8_t> takeIndices() { return std::move(m_indices); }

private:
    std::uint8_t take() { return std::to_integer<std::uint8_t>(m_input[m_position++]); }
    bool isFull() const { return m_y == m_height || (m_y + 1 == m_height && m_x >= m_width); }
    bool hasRoom(std::size_t count) const { return m_y < m_height && count <= m_paddedWidth - m_x; }

    // The high nibble is the first of two pixels.
    std::uint8_t pixelOf(std::size_t byte, std::size_t number) const
    {
        if (!m_hasNibbles) return static_cast<std::uint8_t>(byte);
        return static_cast<std::uint8_t>(number % 2 == 0 ? byte >> 4U : byte & 0x0FU);
    }

    void put(std::uint8_t index)
    {
        if (m_x < m_width) m_indices[m_y * m_width + m_x] = index;
        ++m_x;
    }

    bool repeat(std::size_t count, std::size_t value)
    {
        if (!hasRoom(count)) return false;
        for (std::size_t i = 0; i < count; ++i)
            put(pixelOf(value, i));
        return true;
    }

    bool escape(std::size_t code)
    {
        switch (code) {
        case 0:
            m_x = 0;
            return m_y++ < m_height;
        case 1:
            m_isEnded = true;
            return true;
        case 2:
            return jump();
        default:
            return copy(code);
        }
    }

    bool jump()
    {
        if (m_position + 2 > m_input.size()) return false;
        m_x += take();
        m_y += take();
        return m_x <= m_width && m_y < m_height;
    }

    bool copy(std::size_t count)
    {
        const std::size_t bytes = m_hasNibbles ? (count + 1) / 2 : count;
        const std::size_t padded = bytes + bytes % 2;
        if (!hasRoom(count) || bytes > m_input.size() - m_position) return false;
        for (std::size_t i = 0; i < count; ++i) {
            put(pixelOf(std::to_integer<std::size_t>(m_input[m_position + (m_hasNibbles ? i / 2 : i)]), i));
        }
        m_position = std::min(m_position + padded, m_input.size());
        return true;
    }

    std::span<const std::byte> m_input;
    std::size_t m_position = 0;
    bool m_hasNibbles;
    std::size_t m_width;
    std::size_t m_paddedWidth; // some programs code what fills the rows up to four bytes
    std::size_t m_height;
    std::size_t m_x = 0;
    std::size_t m_y = 0; // in the order of the file's rows
    bool m_isEnded = false;
    std::vector<std::uint8_t> m_indices;
};

} // namespace

Result<std::vector<std::uint8_t>> decodeBmpRuns(const BmpLayout& layout)
{
    RunDecoder decoder(layout);
    if (!decoder.run()) return Error{"damaged BMP run lengths"};
    return decoder.takeIndices();
}

} // namespace lumora
