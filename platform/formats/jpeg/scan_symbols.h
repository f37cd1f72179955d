// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What one scan of a file will say, noted while its blocks come by and told in the shortest code once all of
// it is known. A byte is held for each symbol, besides the bits that go as they are. One thread; throws
// std::bad_alloc.
#pragma once

#include "jpeg/huffman_code.h"
#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <vector>

namespace lumora {

// Takes a file piece by piece.
using JpegTaker = std::function<Status(std::span<const std::byte>)>;

// Values noted one after another, without being moved as they become many.
template <class T>
class Notes
{
public:
    static constexpr std::size_t perBlock = 16384 / sizeof(T);

    void add(T value)
    {
        if (m_used == perBlock) {
            m_blocks.push_back(std::make_unique_for_overwrite<T[]>(perBlock));
            m_used = 0;
        }
        m_blocks.back()[m_used++] = value;
    }
    std::size_t blocks() const { return m_blocks.size(); }
    std::span<const T> block(std::size_t i) const
    {
        return {m_blocks[i].get(), i + 1 < m_blocks.size() ? perBlock : m_used};
    }
    void forget(std::size_t i) { m_blocks[i].reset(); }

private:
    std::vector<std::unique_ptr<T[]>> m_blocks;
    std::size_t m_used = perBlock; // of the last block
};

class ScanSymbols
{
public:
    // A symbol of progressive coding (ITU-T T.81, G.1.2): its lower half is how many bits of a number follow,
    // or 0 where its upper half is. They are the lower ones of `bits`.
    void add(unsigned symbol, unsigned bits = 0)
    {
        ++m_counts[symbol];
        m_symbols.add(static_cast<std::uint8_t>(symbol));
        addBits(bits, bitsAfter(symbol));
    }
    // Bits that go as they are, 1 to 16, in a scan whose symbols have at most one bit of a number after them.
    void addPlain(unsigned bits, unsigned count)
    {
        m_symbols.add(static_cast<std::uint8_t>((count - 1) << 4U | plain));
        m_hasPlain = true;
        addBits(bits, count);
    }
    // After the last one.
    void finish();

    HuffmanCode code() const { return shortestCode(m_counts); }
    // The scan's data in that code, piece by piece; what has been handed out is forgotten.
    Status encode(const HuffmanCode& code, const JpegTaker& take);

private:
    // No symbol's lower half where there are plain bits.
    static constexpr unsigned plain = 2;
    static constexpr unsigned zeroRun = 0xF0;

    static unsigned bitsAfter(unsigned symbol)
    {
        if (const unsigned size = symbol & 15U; size > 0) return size;
        return symbol == zeroRun ? 0 : symbol >> 4U;
    }
    void addBits(unsigned bits, unsigned count)
    {
        if (count == 0) return;
        const std::uint64_t kept = bits & ((1U << count) - 1);
        m_free -= static_cast<int>(count);
        if (m_free >= 0) {
            m_word |= kept << static_cast<unsigned>(m_free);
            return;
        }
        m_bits.add(m_word | kept >> static_cast<unsigned>(-m_free));
        m_free += 64;
        m_word = kept << static_cast<unsigned>(m_free);
    }

    SymbolCounts m_counts{};
    Notes<std::uint8_t> m_symbols;
    Notes<std::uint64_t> m_bits; // from the highest bit of each on
    std::uint64_t m_word = 0;
    int m_free = 64; // bits of the word
    bool m_hasPlain = false;
};

} // namespace lumora
