// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a TIFF file as stored, of all samples or of one plane, whether they lie in strips or in tiles.
// Holds one strip, one row of tiles, or of large strips one row. One thread at a time.
#pragma once

#include "system/result.h"
#include "tiff/tiff_deflate.h"
#include "tiff/tiff_file.h"
#include "tiff/tiff_layout.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace lumora {

class TiffPlane
{
public:
    // A file of its own for each plane: going to and fro between planes would decode their strips anew.
    // Throws std::bad_alloc.
    static Result<TiffPlane> open(int descriptor, const TiffLayout& layout, int plane);

    // Packed samples, valid until the next call. Rows are asked for from the top down. Fails when they are
    // damaged or missing.
    Result<std::span<const std::uint8_t>> row(int y);

private:
    TiffPlane(TiffFile file, int plane) : m_file(std::move(file)), m_plane(static_cast<std::uint16_t>(plane))
    {
    }
    Status planStrips();
    Status planTiles();
    bool readTiles(std::uint32_t top);
    bool readStrip(std::uint32_t top);
    bool readBlock(std::uint32_t top);

    TiffFile m_file;
    std::uint16_t m_plane;
    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    std::vector<std::uint8_t> m_rows;
    std::size_t m_rowBytes = 0;
    std::uint32_t m_blockHeight = 1; // of what is read at once
    std::vector<std::uint8_t> m_tile;
    std::uint32_t m_tileWidth = 0;
    std::optional<TiffDeflateCheck> m_check;
    std::int64_t m_top = -1; // of the rows that are there
};

} // namespace lumora
