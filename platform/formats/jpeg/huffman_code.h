// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The shortest code for symbols that occur so often, as the format takes it: of at most 16 bits, and none of
// ones only (ITU-T T.81, K.2 and annex C). Any thread.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace lumora {

// By symbol.
using SymbolCounts = std::array<std::uint64_t, 256>;

struct HuffmanCode
{
    struct Word
    {
        std::uint16_t bits;
        std::uint8_t length; // 0 for a symbol that does not occur
    };

    std::array<std::uint8_t, 16> countOfLength{}; // 1 to 16 bits
    std::vector<std::uint8_t> symbols;            // from the shortest on
    std::array<Word, 256> words{};
};

HuffmanCode shortestCode(const SymbolCounts& counts);

} // namespace lumora
