// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Deflated data from steps. One thread; throws std::bad_alloc.
#pragma once

#include "png/deflate_blocks.h"

#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

class BlockWriter
{
public:
    // A block that is not the last.
    void write(std::span<const Step> steps, const SymbolCounts& counts);
    // Fills the last byte up with a block of nothing; returns all.
    std::vector<std::uint8_t> end(bool isLast);

private:
    void put(std::uint32_t bits, unsigned count);

    std::vector<std::uint8_t> m_bytes;
    std::uint64_t m_bits = 0; // that fill no byte yet
    unsigned m_bitCount = 0;
};

} // namespace lumora
