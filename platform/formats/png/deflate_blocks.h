// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How steps are divided into blocks, each of which has codes of its own. Any thread; throws std::bad_alloc.
#pragma once

#include "png/cheapest_path.h"
#include "png/deflate_code.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace lumora {

struct SymbolCounts
{
    std::array<std::uint32_t, literalSymbols + lengthSlots> literalsAndLengths{};
    std::array<std::uint32_t, distanceSlots> distances{};
};

struct DeflateBlock
{
    std::size_t end; // of its steps, which begin where those of the block before end
    SymbolCounts counts;
    double bits; // of ideal codes, roughly with their description
};

// Into as many as save bits.
std::vector<DeflateBlock> blocksOf(std::span<const Step> steps);

// With the codes of such a block.
StepCosts costsBy(const SymbolCounts& counts);
// Before anything is known of the steps: single bytes by their frequency, matches by what is usual.
StepCosts costsBefore(std::span<const std::uint8_t> bytes);

} // namespace lumora
