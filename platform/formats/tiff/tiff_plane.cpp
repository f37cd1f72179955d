// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_plane.h"

#include <algorithm>

namespace lumora {

namespace {

// Of strips and tiles that are decoded as a whole. Only then does the check that ends some compressions tell
// whether the data is sound.
constexpr std::uint64_t largestStrip = 1U << 24U;
constexpr std::uint64_t largestTile = 1U << 30U; // a tiny file may claim any

} // namespace

Result<TiffPlane> TiffPlane::open(int descriptor, const TiffLayout& layout, int plane)
{
    auto file = TiffFile::open(descriptor);
    if (!file) return file.error();
    TiffPlane rows(std::move(*file), plane);
    if (rows.m_file.number(TIFFTAG_COMPRESSION) == COMPRESSION_JPEG)
        TIFFSetField(rows.m_file.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
    rows.m_width = static_cast<std::uint32_t>(layout.width);
    rows.m_height = static_cast<std::uint32_t>(layout.height);
    if (auto status = layout.isTiled ? rows.planTiles() : rows.planStrips(); !status) return status.error();
    rows.m_rows.resize(rows.m_rowBytes * rows.m_blockHeight);
    return rows;
}

Status TiffPlane::planStrips()
{
    m_rowBytes = static_cast<std::size_t>(TIFFScanlineSize64(m_file.get()));
    std::uint32_t rows = 1;
    TIFFGetFieldDefaulted(m_file.get(), TIFFTAG_ROWSPERSTRIP, &rows);
    rows = std::min(rows, m_height);
    if (rows == 0 || m_rowBytes == 0) return Error{"unreadable TIFF"};
    const std::uint64_t stripBytes = std::uint64_t{m_rowBytes} * rows;
    if (stripBytes <= largestStrip) m_blockHeight = rows;
    m_check.emplace(m_file, stripBytes, stripBytes <= largestStrip);
    return Done{};
}

Status TiffPlane::planTiles()
{
    TIFFGetField(m_file.get(), TIFFTAG_TILEWIDTH, &m_tileWidth);
    TIFFGetField(m_file.get(), TIFFTAG_TILELENGTH, &m_blockHeight);
    const std::uint64_t tileBytes = TIFFTileSize64(m_file.get());
    if (m_tileWidth == 0 || m_blockHeight == 0 || tileBytes > largestTile) return Error{"unreadable TIFF"};
    const std::size_t across = (m_width + std::size_t{m_tileWidth} - 1) / m_tileWidth;
    m_tile.resize(tileBytes);
    m_check.emplace(m_file, tileBytes, true);
    m_rowBytes = across * static_cast<std::size_t>(TIFFTileRowSize64(m_file.get()));
    return Done{};
}

bool TiffPlane::readTiles(std::uint32_t top)
{
    const auto tileRow = static_cast<std::size_t>(TIFFTileRowSize64(m_file.get()));
    std::uint8_t* to = m_rows.data();
    for (std::uint32_t left = 0; left < m_width; left += m_tileWidth, to += tileRow) {
        const std::uint32_t tile = TIFFComputeTile(m_file.get(), left, top, 0, m_plane);
        if (!m_check->isSound(m_file, tile) ||
            TIFFReadTile(m_file.get(), m_tile.data(), left, top, 0, m_plane) < 0)
            return false;
        for (std::size_t y = 0; y < m_blockHeight; ++y)
            std::copy_n(m_tile.data() + y * tileRow, tileRow, to + y * m_rowBytes);
    }
    return true;
}

bool TiffPlane::readStrip(std::uint32_t top)
{
    const auto bytes = static_cast<tmsize_t>(m_rowBytes * std::min(m_blockHeight, m_height - top));
    const std::uint32_t strip = TIFFComputeStrip(m_file.get(), top, m_plane);
    return m_check->isSound(m_file, strip) &&
           TIFFReadEncodedStrip(m_file.get(), strip, m_rows.data(), bytes) == bytes;
}

bool TiffPlane::readBlock(std::uint32_t top)
{
    if (m_tileWidth != 0) return readTiles(top);
    if (m_blockHeight > 1) return readStrip(top);
    return m_check->isSound(m_file, TIFFComputeStrip(m_file.get(), top, m_plane)) &&
           TIFFReadScanline(m_file.get(), m_rows.data(), top, m_plane) == 1;
}

Result<std::span<const std::uint8_t>> TiffPlane::row(int y)
{
    const auto line = static_cast<std::uint32_t>(y);
    const std::uint32_t top = line / m_blockHeight * m_blockHeight;
    if (m_top != std::int64_t{top}) {
        if (!readBlock(top) || m_file.isDamaged()) return Error{"damaged TIFF"};
        m_top = top;
    }
    return std::span<const std::uint8_t>(m_rows).subspan((line - top) * m_rowBytes, m_rowBytes);
}

} // namespace lumora
