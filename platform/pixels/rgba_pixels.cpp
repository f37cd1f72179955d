// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "rgba_pixels.h"

#include <sanitizer/asan_interface.h>
#include <sys/mman.h>

#include <algorithm>
#include <new>

namespace lumora {
namespace {

// Before and after a bitmap: what AddressSanitizer watches, which does not see the ends of mappings. A page,
// so that the pixels begin at one.
constexpr std::size_t guard = 4096;

// Exact rounding of a * b / 255 without a division.
std::uint8_t scaled(unsigned value, unsigned alpha)
{
    const unsigned product = value * alpha + 128;
    return static_cast<std::uint8_t>((product + (product >> 8U)) >> 8U);
}

} // namespace

void premultiply(std::uint8_t* pixels, std::size_t count, int bands)
{
    const auto colors = static_cast<std::size_t>(bands - 1);
    for (std::size_t i = 0; i < count; ++i, pixels += bands) {
        const unsigned alpha = pixels[colors];
        if (alpha == 255) continue;
        for (std::size_t c = 0; c < colors; ++c)
            pixels[c] = scaled(pixels[c], alpha);
    }
}

void unpremultiply(std::uint8_t* pixels, std::size_t count, int bands)
{
    const auto colors = static_cast<std::size_t>(bands - 1);
    for (std::size_t i = 0; i < count; ++i, pixels += bands) {
        const unsigned alpha = pixels[colors];
        if (alpha == 255) continue;
        for (std::size_t c = 0; c < colors; ++c) {
            const unsigned straight = alpha == 0 ? 0U : (pixels[c] * 255U + alpha / 2) / alpha;
            pixels[c] = static_cast<std::uint8_t>(std::min(straight, 255U));
        }
    }
}

void UnmapBytes::operator()(std::uint8_t* memory) const
{
    std::uint8_t* const first = memory - guard;
    ASAN_UNPOISON_MEMORY_REGION(first, bytes + 2 * guard);
    ::munmap(first, bytes + 2 * guard);
}

PageBytes allocatePages(std::size_t bytes)
{
    const std::size_t mapped = bytes + 2 * guard;
    void* memory = ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::bad_alloc();
    ::madvise(memory, mapped, MADV_HUGEPAGE);
    auto* const first = static_cast<std::uint8_t*>(memory);
    ASAN_POISON_MEMORY_REGION(first, guard);
    ASAN_POISON_MEMORY_REGION(first + guard + bytes, guard);
    return PageBytes(first + guard, UnmapBytes{bytes});
}

} // namespace lumora
