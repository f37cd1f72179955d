// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "gif/gif_data.h"

#include <array>
#include <cstdint>
#include <optional>

namespace lumora {
namespace {

// Bytes in order; zeros from the end on.
class Reader
{
public:
    explicit Reader(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    bool isAtEnd() const { return m_at >= m_bytes.size(); }
    unsigned next() { return isAtEnd() ? 0 : std::to_integer<unsigned>(m_bytes[m_at++]); }
    unsigned nextPair()
    {
        const unsigned low = next();
        return low | next() << 8U;
    }
    void skip(std::size_t count) { m_at += count; }

private:
    std::span<const std::byte> m_bytes;
    std::size_t m_at = 0;
};

// Codes of growing width out of blocks that each begin with their length and end with an empty one.
class Codes
{
public:
    explicit Codes(Reader& reader) : m_reader(reader) {}

    std::optional<unsigned> next(unsigned width)
    {
        for (; m_count < width; m_count += 8) {
            if (m_left == 0) m_left = m_reader.next();
            if (m_left == 0 || m_reader.isAtEnd()) return std::nullopt;
            --m_left;
            m_bits |= m_reader.next() << m_count;
        }
        const unsigned code = m_bits & ((1U << width) - 1);
        m_bits >>= width;
        m_count -= width;
        return code;
    }

private:
    Reader& m_reader;
    unsigned m_left = 0; // of the block
    std::uint32_t m_bits = 0;
    unsigned m_count = 0;
};

void skipPalette(Reader& reader, unsigned flags)
{
    if ((flags & 0x80U) != 0) reader.skip(std::size_t{3} << ((flags & 7U) + 1));
}

// The lengths alone of what the codes stand for.
bool givesPixels(Reader& reader, std::uint64_t pixels)
{
    constexpr unsigned mostCodes = 4096;
    constexpr unsigned widest = 12;
    const unsigned first = reader.next();
    if (first < 1 || first >= widest) return false;
    const unsigned clear = 1U << first;
    const unsigned end = clear + 1;
    std::array<std::uint32_t, mostCodes> lengths{};
    for (unsigned code = 0; code < clear; ++code)
        lengths.at(code) = 1;

    Codes codes(reader);
    unsigned width = first + 1;
    unsigned next = end + 1;
    std::uint32_t last = 0; // length; 0 after a clear code
    for (std::uint64_t given = 0; given < pixels;) {
        const auto code = codes.next(width);
        if (!code || *code == end) return false;
        if (*code == clear) {
            width = first + 1;
            next = end + 1;
            last = 0;
            continue;
        }
        const bool isNew = *code == next && last > 0;
        if (!isNew && (*code >= next || (last == 0 && *code > clear))) return false;
        const std::uint32_t length = isNew ? last + 1 : lengths.at(*code);
        if (last > 0 && next < mostCodes) {
            lengths.at(next++) = last + 1;
            if (next == 1U << width && width < widest) ++width;
        }
        last = length;
        given += length;
    }
    return true;
}

} // namespace

bool hasWholeGifPicture(std::span<const std::byte> file)
{
    constexpr std::size_t beforeFlags = 10;
    constexpr unsigned extension = 0x21;
    constexpr unsigned picture = 0x2C;
    Reader reader(file);
    reader.skip(beforeFlags);
    const unsigned flags = reader.next();
    reader.skip(2);
    skipPalette(reader, flags);
    while (!reader.isAtEnd()) {
        const unsigned block = reader.next();
        if (block == extension) {
            reader.skip(1);
            while (const unsigned length = reader.next())
                reader.skip(length);
        } else if (block == picture) {
            reader.skip(4); // its place
            const std::uint64_t width = reader.nextPair();
            const std::uint64_t height = reader.nextPair();
            skipPalette(reader, reader.next());
            return givesPixels(reader, width * height);
        } else if (block != 0) {
            return false;
        }
    }
    return false;
}

} // namespace lumora
