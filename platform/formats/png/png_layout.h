// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The ways to lay a picture's pixels down in a PNG file. Any thread; throws std::bad_alloc.
#pragma once

#include "format_io.h"
#include "indexed_pixels.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace lumora {

// Rows in memory, with as much room in front of them as their filter bytes take.
class FilterableRows
{
public:
    FilterableRows() = default;
    FilterableRows(std::size_t rowBytes, std::size_t height);

    std::span<std::uint8_t> rows() { return {m_memory.get() + m_room, m_size - m_room}; }
    std::span<const std::uint8_t> rows() const { return {m_memory.get() + m_room, m_size - m_room}; }
    // The room and the rows.
    std::span<std::uint8_t> all() { return {m_memory.get(), m_size}; }

private:
    std::unique_ptr<std::uint8_t[]> m_memory;
    std::size_t m_room = 0;
    std::size_t m_size = 0;
};

struct PngLayout
{
    std::size_t width;
    std::size_t height;
    int bitDepth;
    int colorType; // 0 gray, 2 RGB, 3 palette, 4 gray and alpha, 6 RGB and alpha
    std::size_t rowBytes;
    std::size_t step; // bytes of a whole pixel, at least 1
    FilterableRows pixels;
    std::vector<PaletteColor> palette = {};
    // The components of transparent pixels, most significant byte first; empty where none are, or where a
    // palette or alpha says which.
    std::vector<std::uint8_t> transparentColor = {};
};

// Takes the rows of the picture. The smaller form for a redrawn one, otherwise the form that it had.
Result<PngLayout> pngLayout(_VipsImage* image, bool keepsModel);

} // namespace lumora
