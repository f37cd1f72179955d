// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_scans.h"

#include "pixels/vector_clones.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

namespace lumora {
namespace {

constexpr unsigned zeroRun = 0xF0; // of sixteen
constexpr int longestZeroRun = 15; // before a number

// From bytes of 0 and 1: a multiplication gathers eight of them in its highest byte.
std::uint64_t bitsOf(const std::array<std::uint8_t, 64>& flags)
{
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < 64; i += 8) {
        static_assert(std::endian::native == std::endian::little);
        std::uint64_t eight = 0;
        std::memcpy(&eight, flags.data() + i, sizeof eight);
        bits |= (eight * 0x0102040810204080U >> 56U) << i;
    }
    return bits;
}

unsigned lengthOf(unsigned size)
{
    return static_cast<unsigned>(std::bit_width(size));
}

// Of a number other than 0, the lower bits of which say what it is once its length is known.
unsigned numberBits(bool isNegative, unsigned size)
{
    return isNegative ? ~size : size;
}

int takeFirst(std::uint64_t& mask)
{
    const int first = std::countr_zero(mask);
    mask &= mask - 1;
    return first;
}

// The means, each by its difference to the one before.
class MeanScan : public BlockScan
{
public:
    void add(const CoefficientBlock& block) override
    {
        const int difference = block.values[0] - std::exchange(m_before, block.values[0]);
        const auto size = static_cast<unsigned>(std::abs(difference));
        m_symbols.add(lengthOf(size), numberBits(difference < 0, size));
    }

private:
    int m_before = 0;
};

// Blocks that have nothing more to tell, which are told together.
class EndRun
{
public:
    void count() { ++m_blocks; }
    bool isLongest() const { return m_blocks == longest; }
    void tell(ScanSymbols& symbols)
    {
        if (m_blocks == 0) return;
        symbols.add((lengthOf(m_blocks) - 1) << 4U, m_blocks);
        m_blocks = 0;
    }

private:
    static constexpr unsigned longest = 0x7FFF;

    unsigned m_blocks = 0;
};

// A band of frequencies, without the last bit of its numbers where that comes in a scan of its own.
class BandScan : public BlockScan
{
public:
    BandScan(FrequencyBand band, bool leavesLastBit) : m_band(band), m_leavesLastBit(leavesLastBit) {}
    void add(const CoefficientBlock& block) override;
    void finish() override;

private:
    FrequencyBand m_band;
    bool m_leavesLastBit;
    EndRun m_ends;
};

// The last bits that a band was told without.
class LastBitScan : public BlockScan
{
public:
    explicit LastBitScan(FrequencyBand band) : m_band(band) {}
    void add(const CoefficientBlock& block) override;
    void finish() override;

private:
    using Bits = std::vector<std::uint8_t>; // one by one

    void tellEnds();
    void tell(Bits& bits);

    FrequencyBand m_band;
    EndRun m_ends;
    Bits m_bitsOfEnds; // of numbers known before, in the blocks of the run
    Bits m_bits;       // the same since this block's last symbol
};

void BandScan::add(const CoefficientBlock& block)
{
    std::uint64_t told = m_band.of(m_leavesLastBit ? block.aboveOne : block.nonzero);
    if (told != 0) m_ends.tell(m_symbols);
    int next = m_band.first;
    while (told != 0) {
        const int at = takeFirst(told);
        int zeros = at - std::exchange(next, at + 1);
        for (; zeros > longestZeroRun; zeros -= longestZeroRun + 1)
            m_symbols.add(zeroRun);
        const int value = block.values[at];
        const unsigned size = static_cast<unsigned>(std::abs(value)) >> (m_leavesLastBit ? 1U : 0U);
        m_symbols.add(static_cast<unsigned>(zeros) << 4U | lengthOf(size), numberBits(value < 0, size));
    }
    if (next > m_band.last) return;
    m_ends.count();
    if (m_ends.isLongest()) m_ends.tell(m_symbols);
}

void BandScan::finish()
{
    m_ends.tell(m_symbols);
    BlockScan::finish();
}

void LastBitScan::add(const CoefficientBlock& block)
{
    std::uint64_t told = m_band.of(block.nonzero);
    const std::uint64_t isNew = told & ~block.aboveOne;
    const int lastNew = 63 - std::countl_zero(isNew);
    int next = m_band.first;
    int zeros = 0;
    while (told != 0) {
        const int at = takeFirst(told);
        zeros += at - std::exchange(next, at + 1);
        for (; zeros > longestZeroRun && at <= lastNew; zeros -= longestZeroRun + 1) {
            tellEnds();
            m_symbols.add(zeroRun);
            tell(m_bits);
        }
        const int value = block.values[at];
        if ((isNew >> at & 1U) == 0) {
            m_bits.push_back(static_cast<std::uint8_t>(std::abs(value) & 1));
            continue;
        }
        tellEnds();
        m_symbols.add(static_cast<unsigned>(zeros) << 4U | 1U, value > 0 ? 1 : 0);
        tell(m_bits);
        zeros = 0;
    }
    if (zeros == 0 && next > m_band.last && m_bits.empty()) return;
    m_ends.count();
    m_bitsOfEnds.insert(m_bitsOfEnds.end(), m_bits.begin(), m_bits.end());
    m_bits.clear();
    // So that a few of them are held at most.
    constexpr std::size_t manyBits = 937;
    if (m_ends.isLongest() || m_bitsOfEnds.size() > manyBits) tellEnds();
}

void LastBitScan::finish()
{
    tellEnds();
    BlockScan::finish();
}

void LastBitScan::tellEnds()
{
    m_ends.tell(m_symbols);
    tell(m_bitsOfEnds);
}

void LastBitScan::tell(Bits& bits)
{
    for (std::size_t from = 0; from < bits.size();) {
        const std::size_t count = std::min<std::size_t>(bits.size() - from, 16);
        unsigned together = 0;
        for (const std::size_t end = from + count; from < end; ++from)
            together = together << 1U | bits[from];
        m_symbols.addPlain(together, static_cast<unsigned>(count));
    }
    bits.clear();
}

} // namespace

LUMORA_VECTOR_CLONES CoefficientBlock blockOf(const std::int16_t* values)
{
    std::array<std::uint8_t, 64> isNonzero;
    std::array<std::uint8_t, 64> isAboveOne;
    for (std::size_t i = 0; i < 64; ++i) {
        isNonzero[i] = values[i] != 0 ? 1 : 0;
        isAboveOne[i] = values[i] > 1 || values[i] < -1 ? 1 : 0;
    }
    return {values, bitsOf(isNonzero), bitsOf(isAboveOne)};
}

std::unique_ptr<BlockScan> scanOf(const ScanForm& form)
{
    if (form.tellsMeans()) return std::make_unique<MeanScan>();
    if (form.bitsBefore > 0) return std::make_unique<LastBitScan>(form.band);
    return std::make_unique<BandScan>(form.band, form.bitsLeft > 0);
}

} // namespace lumora
