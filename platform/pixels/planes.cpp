// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "planes.h"

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

std::ptrdiff_t alignedStride(int width, int componentBytes)
{
    constexpr auto step = static_cast<std::ptrdiff_t>(alignment);
    return (static_cast<std::ptrdiff_t>(width) * componentBytes + step - 1) / step * step;
}

LUMORA_VECTOR_CLONES void split3(const std::uint8_t* packed, std::uint8_t* __restrict a,
                                 std::uint8_t* __restrict b, std::uint8_t* __restrict c, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        a[i] = packed[3 * i];
        b[i] = packed[3 * i + 1];
        c[i] = packed[3 * i + 2];
    }
}

LUMORA_VECTOR_CLONES void join3(const std::uint8_t* a, const std::uint8_t* b, const std::uint8_t* c,
                                std::uint8_t* __restrict packed, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        packed[3 * i] = a[i];
        packed[3 * i + 1] = b[i];
        packed[3 * i + 2] = c[i];
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

Planes::Planes(int width, int height, int bands, int componentBytes)
    : m_width(width), m_height(height), m_bands(bands), m_stride(alignedStride(width, componentBytes)),
      m_bytes(allocateAligned(static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(height) *
                              static_cast<std::size_t>(bands)))
{
}

void Planes::deinterleave(const std::uint8_t* interleaved, std::ptrdiff_t rowStride, int count)
{
    for (int y = 0; y < count; ++y, interleaved += rowStride) {
        if (m_bands == 3) {
            split3(interleaved, row(0, y), row(1, y), row(2, y), m_width);
            continue;
        }
        for (int band = 0; band < m_bands; ++band)
            splitBand(interleaved + band, row(band, y), m_width, m_bands);
    }
}

void Planes::interleave(int count, std::uint8_t* interleaved) const
{
    for (int y = 0; y < count; ++y, interleaved += static_cast<std::ptrdiff_t>(m_width) * m_bands) {
        if (m_bands == 3) {
            join3(row(0, y), row(1, y), row(2, y), interleaved, m_width);
            continue;
        }
        for (int band = 0; band < m_bands; ++band)
            joinBand(row(band, y), interleaved + band, m_width, m_bands);
    }
}

void Planes::moveToTop(int first, int count)
{
    for (int band = 0; band < m_bands; ++band)
        std::memmove(row(band, 0), row(band, first),
                     static_cast<std::size_t>(m_stride) * static_cast<std::size_t>(count));
}

} // namespace lumora
