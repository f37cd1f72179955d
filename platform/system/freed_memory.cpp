// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/freed_memory.h"

#include <malloc.h>

#include <atomic>

namespace lumora {

void keepFreedMemory()
{
    constexpr int largestOnHeap = 32 << 20; // the most that the C library takes
    constexpr int mostKept = 256 << 20;
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_MMAP_THRESHOLD, largestOnHeap);
    ::mallopt(M_TRIM_THRESHOLD, mostKept);
}

void fillNewMemory(std::optional<std::uint8_t> value)
{
    // The C library is told the inverse, of which 0 means no fill.
    ::mallopt(M_PERTURB, value ? 255 - *value : 0);
}

void returnFreedMemory()
{
    constexpr unsigned filesBetween = 4;
    static std::atomic<unsigned> files = 0;
    if (++files % filesBetween == 0) ::malloc_trim(0);
}

} // namespace lumora
