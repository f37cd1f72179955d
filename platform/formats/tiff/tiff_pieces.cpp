// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_pieces.h"

#include <algorithm>
#include <cstdint>

namespace lumora {
namespace {

std::uint32_t field(TIFF* tiff, std::uint32_t tag)
{
    std::uint32_t value = 0;
    TIFFGetFieldDefaulted(tiff, tag, &value);
    return value;
}

// Of one piece without compression.
std::uint64_t wantedBytes(TIFF* tiff, std::uint32_t piece)
{
    if (TIFFIsTiled(tiff) != 0) return TIFFTileSize64(tiff);
    const std::uint32_t height = field(tiff, TIFFTAG_IMAGELENGTH);
    const std::uint32_t rows = std::min(std::max(field(tiff, TIFFTAG_ROWSPERSTRIP), 1U), height);
    const std::uint32_t perPlane = rows == 0 ? 1 : (height + rows - 1) / rows;
    const std::uint32_t above = piece % perPlane * rows;
    return TIFFVStripSize64(tiff, std::min(rows, height - above));
}

} // namespace

bool hasAllPieces(const TiffFile& file)
{
    TIFF* const tiff = file.get();
    std::uint16_t compression = COMPRESSION_NONE;
    TIFFGetFieldDefaulted(tiff, TIFFTAG_COMPRESSION, &compression);
    const std::uint32_t pieces = TIFFIsTiled(tiff) != 0 ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff);
    for (std::uint32_t piece = 0; piece < pieces; ++piece) {
        const std::uint64_t bytes = TIFFGetStrileByteCount(tiff, piece);
        if (bytes == 0 || TIFFGetStrileOffset(tiff, piece) == 0) return false;
        if (compression == COMPRESSION_NONE && bytes < wantedBytes(tiff, piece)) return false;
    }
    return pieces > 0;
}

} // namespace lumora
