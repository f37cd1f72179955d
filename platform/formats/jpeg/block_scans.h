// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks as the symbols of progressive coding (ITU-T T.81, G.1.2), for each kind of scan that the files have.
// One thread; throws std::bad_alloc.
#pragma once

#include "jpeg/scan_symbols.h"

#include <cstdint>
#include <memory>

namespace lumora {

// Coefficients in the order of zigzag.h, and a bit for each, from the lowest on.
struct CoefficientBlock
{
    const std::int16_t* values; // 64
    std::uint64_t nonzero;
    std::uint64_t aboveOne; // or below minus one
};

CoefficientBlock blockOf(const std::int16_t* values);

struct FrequencyBand
{
    int first;
    int last; // up to 63

    std::uint64_t of(std::uint64_t mask) const
    {
        return mask >> first << first << (63 - last) >> (63 - last);
    }
};

// The means of blocks, or a band of what varies in them.
struct ScanForm
{
    int component;
    FrequencyBand band;
    unsigned bitsBefore; // of each number, 0 or 1, that an earlier scan left
    unsigned bitsLeft;   // to a later one

    bool tellsMeans() const { return band.last == 0; }
};

class BlockScan
{
public:
    virtual ~BlockScan() = default;
    // The next one, row by row.
    virtual void add(const CoefficientBlock& block) = 0;
    // After the last one.
    virtual void finish() { m_symbols.finish(); }
    ScanSymbols& symbols() { return m_symbols; }

protected:
    ScanSymbols m_symbols;
};

std::unique_ptr<BlockScan> scanOf(const ScanForm& form);

} // namespace lumora
