// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/scan_symbols.h"

#include <utility>

namespace lumora {
namespace {

// Bits in the order in which they were noted, each once.
class NotedBits
{
public:
    explicit NotedBits(Notes<std::uint64_t>& notes) : m_notes(notes) {}

    // Up to 16.
    std::uint64_t take(unsigned count)
    {
        if (count == 0) return 0;
        std::uint64_t bits = 0;
        if (count > m_left) {
            bits = m_left == 0 ? 0 : m_word >> (64 - m_left);
            count -= m_left;
            next();
        }
        bits = bits << count | m_word >> (64 - count);
        m_word <<= count;
        m_left -= count;
        return bits;
    }

private:
    void next()
    {
        m_word = m_notes.block(m_block)[m_at];
        m_left = 64;
        if (++m_at < Notes<std::uint64_t>::perBlock) return;
        m_at = 0;
        m_notes.forget(m_block++);
    }

    Notes<std::uint64_t>& m_notes;
    std::size_t m_block = 0;
    std::size_t m_at = 0;
    std::uint64_t m_word = 0; // what is left stands highest
    unsigned m_left = 0;
};

// Bytes of a scan, in which no marker may be seen.
class ScanBytes
{
public:
    // With room for so many calls of put() between two of handOut().
    explicit ScanBytes(std::size_t calls) : m_bytes(std::make_unique_for_overwrite<std::byte[]>(calls * 8)) {}

    // Up to 32 bits, each byte of which may need another one.
    void put(std::uint64_t bits, unsigned count)
    {
        m_word = m_word << count | bits;
        m_count += count;
        if (m_count < 32) return;
        m_count -= 32;
        const auto four = static_cast<std::uint32_t>(m_word >> m_count);
        const bool mayHaveMarker = ((four & ~(four + 0x01010101U)) & 0x80808080U) != 0;
        for (unsigned shift = 32; shift > 0;) {
            shift -= 8;
            append(static_cast<std::uint8_t>(four >> shift), mayHaveMarker);
        }
    }

    // Fills the last byte up with ones.
    void finish()
    {
        put(0x7F, 7);
        for (; m_count >= 8; m_count -= 8)
            append(static_cast<std::uint8_t>(m_word >> (m_count - 8)), true);
    }

    Status handOut(const JpegTaker& take) { return take({m_bytes.get(), std::exchange(m_size, 0)}); }

private:
    void append(std::uint8_t byte, bool mayBeMarker)
    {
        m_bytes[m_size++] = std::byte{byte};
        if (mayBeMarker && byte == 0xFF) m_bytes[m_size++] = std::byte{0};
    }

    std::unique_ptr<std::byte[]> m_bytes;
    std::size_t m_size = 0;
    std::uint64_t m_word = 0; // its last m_count bits are still to be written
    unsigned m_count = 0;
};

} // namespace

void ScanSymbols::finish()
{
    m_bits.add(m_word);
}

Status ScanSymbols::encode(const HuffmanCode& code, const JpegTaker& take)
{
    constexpr std::size_t atTheEnd = 2;
    ScanBytes scan(Notes<std::uint8_t>::perBlock + atTheEnd);
    NotedBits noted(m_bits);
    for (std::size_t i = 0; i < m_symbols.blocks(); ++i) {
        for (const unsigned symbol : m_symbols.block(i)) {
            if (m_hasPlain && (symbol & 15U) == plain) {
                const unsigned count = (symbol >> 4U) + 1;
                scan.put(noted.take(count), count);
                continue;
            }
            const auto [word, length] = code.words[symbol];
            const unsigned count = bitsAfter(symbol);
            scan.put(std::uint64_t{word} << count | noted.take(count), length + count);
        }
        m_symbols.forget(i);
        if (auto status = scan.handOut(take); !status) return status;
    }
    scan.finish();
    return scan.handOut(take);
}

} // namespace lumora
