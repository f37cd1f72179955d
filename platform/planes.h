// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// 8-bit components as separate, aligned planes: the form in which the resampling library works. For the codec
// layer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace lumora {

struct FreeBytes
{
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
};
using AlignedBytes = std::unique_ptr<std::uint8_t, FreeBytes>;

// Aligned to 64 bytes, at least one byte, uninitialised. Throws std::bad_alloc.
AlignedBytes allocateAligned(std::size_t bytes);

class Planes
{
public:
    Planes(int width, int height, int bands);

    int bands() const { return m_bands; }
    std::ptrdiff_t stride() const { return m_stride; }
    std::uint8_t* row(int band, int y) { return m_bytes.get() + offset(band, y); }
    const std::uint8_t* row(int band, int y) const { return m_bytes.get() + offset(band, y); }

    // Between tightly packed interleaved rows and rows [first, first + count) of the planes.
    void deinterleave(const std::uint8_t* packed, int first, int count);
    void interleave(int first, int count, std::uint8_t* packed) const;
    // Copies `count` rows of `other` from row `firstOfOther` on to the top.
    void copyRows(const Planes& other, int firstOfOther, int count);

private:
    std::ptrdiff_t offset(int band, int y) const
    {
        return (static_cast<std::ptrdiff_t>(band) * m_height + y) * m_stride;
    }

    int m_width;
    int m_height;
    int m_bands;
    std::ptrdiff_t m_stride;
    AlignedBytes m_bytes;
};

} // namespace lumora
