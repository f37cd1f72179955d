// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "planes.h"

#include "pixels/interleaving.h"

#include <array>
#include <cstring>
#include <new>

namespace lumora {
namespace {

constexpr std::size_t alignment = 64;

std::ptrdiff_t alignedStride(int width, int componentBytes)
{
    constexpr auto step = static_cast<std::ptrdiff_t>(alignment);
    return (static_cast<std::ptrdiff_t>(width) * componentBytes + step - 1) / step * step;
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
            deinterleave3(interleaved, m_width, row(0, y), row(1, y), row(2, y));
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
            interleave3(row(0, y), row(1, y), row(2, y), m_width, interleaved);
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
