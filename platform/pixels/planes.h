// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Components as separate, aligned planes: the form in which the resampling library works. One thread.
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
    // Uninitialised; `componentBytes` is 1 or 2.
    Planes(int width, int height, int bands, int componentBytes);

    int bands() const { return m_bands; }
    std::ptrdiff_t stride() const { return m_stride; }
    std::uint8_t* row(int band, int y) { return m_bytes.get() + offset(band, y); }
    const std::uint8_t* row(int band, int y) const { return m_bytes.get() + offset(band, y); }

    // Between interleaved rows of 8-bit components, `rowStride` bytes from one to the next, and the first
    // `count` rows of the planes.
    void deinterleave(const std::uint8_t* interleaved, std::ptrdiff_t rowStride, int count);
    void interleave(int count, std::uint8_t* interleaved) const; // tightly packed
    // Moves `count` rows from row `first` on to the top.
    void moveToTop(int first, int count);

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
