// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/planes.h"

#include <array>
#include <cstring>
#include <new>

// Compiled twice, the second time with the byte shuffles that x86-64 has since AVX2; the loader picks one.
#if defined(__x86_64__) && defined(__GNUC__) && !defined(__clang__) && !defined(__SANITIZE_ADDRESS__) &&     \
    !defined(__SANITIZE_THREAD__)
#define LUMORA_VECTOR_CLONES __attribute__((target_clones("avx2", "default"), optimize("O3")))
#else
#define LUMORA_VECTOR_CLONES
#endif

namespace lumora {
namespace {

constexpr std::size_t alignment = 64;

LUMORA_VECTOR_CLONES void split3(const std::uint8_t* packed, std::uint8_t* __restrict a,
                                 std::uint8_t* __restrict b, std::uint8_t* __restrict c, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        a[i] = packed[3 * i];
        b[i] = packed[3 * i + 1];
        c[i] = packed[3 * i + 2];
    }
}

void splitBand(const std::uint8_t* packed, std::uint8_t* plane, std::ptrdiff_t count, int bands)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        plane[i] = packed[i * bands];
}

void joinBand(const std::uint8_t* plane, std::uint8_t* packed, std::ptrdiff_t count, int bands)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        packed[i * bands] = plane[i];
}

} // namespace

AlignedBytes allocateAligned(std::size_t bytes)
{
    const std::size_t rounded = (bytes / alignment + 1) * alignment;
    auto* memory = static_cast<std::uint8_t*>(std::aligned_alloc(alignment, rounded));
    if (!memory) throw std::bad_alloc();
    return AlignedBytes(memory);
}

Planes::Planes(int width, int height, int bands)
    : m_width(width), m_height(height), m_bands(bands),
      m_stride((width + static_cast<std::ptrdiff_t>(alignment) - 1) / static_cast<std::ptrdiff_t>(alignment) *
               static_cast<std::ptrdiff_t>(alignment)),
      m_bytes(allocateAligned(static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(height) *
                              static_cast<std::size_t>(bands)))
{
}

void Planes::deinterleave(const std::uint8_t* packed, int first, int count)
{
    for (int y = first; y < first + count; ++y, packed += static_cast<std::ptrdiff_t>(m_width) * m_bands) {
        if (m_bands == 3) {
            split3(packed, row(0, y), row(1, y), row(2, y), m_width);
            continue;
        }
        for (int band = 0; band < m_bands; ++band)
            splitBand(packed + band, row(band, y), m_width, m_bands);
    }
}

void Planes::interleave(int first, int count, std::uint8_t* packed) const
{
    for (int y = first; y < first + count; ++y, packed += static_cast<std::ptrdiff_t>(m_width) * m_bands) {
        for (int band = 0; band < m_bands; ++band)
            joinBand(row(band, y), packed + band, m_width, m_bands);
    }
}

void Planes::copyRows(const Planes& other, int firstOfOther, int count)
{
    for (int band = 0; band < m_bands; ++band) {
        std::memcpy(row(band, 0), other.row(band, firstOfOther),
                    static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(count));
    }
}

} // namespace lumora
