// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/freed_memory.h"

#include <malloc.h>

#include <atomic>

namespace lumora {

void returnFreedMemory()
{
    constexpr unsigned filesBetween = 4;
    static std::atomic<unsigned> files = 0;
    if (++files % filesBetween == 0) ::malloc_trim(0);
}

} // namespace lumora
