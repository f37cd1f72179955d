// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Codes of deflated data (RFC 1951, 3.2.2). Any thread; throws std::bad_alloc.
#pragma once

#include <cstdint>
#include <span>

namespace lumora {

struct CodeWord
{
    std::uint16_t bits;  // in the order of writing, the first one lowest
    std::uint8_t length; // 0 for a symbol that does not occur
};

// The shortest code of which no word is longer (package-merge: Larmore and Hirschberg 1990). A symbol that is
// alone gets one bit. At most 2^longest symbols occur.
void findCode(std::span<const std::uint32_t> counts, unsigned longest, std::span<CodeWord> words);

} // namespace lumora
