// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_colors.h"

#include <algorithm>
#include <vector>

namespace lumora {
namespace {

class TiffColors : public TiffRows
{
public:
    TiffColors(TiffFile file, const TiffLayout& layout)
        : m_file(std::move(file)), m_width(static_cast<std::uint32_t>(layout.width)),
          m_height(static_cast<std::uint32_t>(layout.height)), m_blockWidth(m_width),
          m_isTiled(layout.isTiled)
    {
        // The turn is made elsewhere, for every format.
        TIFFSetField(m_file.get(), TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
        if (m_isTiled) {
            TIFFGetField(m_file.get(), TIFFTAG_TILEWIDTH, &m_blockWidth);
            TIFFGetField(m_file.get(), TIFFTAG_TILELENGTH, &m_blockHeight);
        } else {
            TIFFGetFieldDefaulted(m_file.get(), TIFFTAG_ROWSPERSTRIP, &m_blockHeight);
            m_blockHeight = std::min(m_blockHeight, m_height);
        }
    }

    Status read(std::uint8_t* row) override
    {
        if (m_blockWidth == 0 || m_blockHeight == 0) return Error{"unreadable TIFF"};
        for (std::uint32_t left = 0; left < m_width; left += m_blockWidth) {
            if (m_y % m_blockHeight == 0 && !readBlock(left)) return Error{"damaged TIFF"};
            copyRow(left, row + std::size_t{left} * 3);
        }
        ++m_y;
        return Done{};
    }

private:
    std::vector<std::uint32_t>& blockAt(std::uint32_t left)
    {
        m_blocks.resize((m_width + std::size_t{m_blockWidth} - 1) / m_blockWidth);
        return m_blocks[left / m_blockWidth];
    }

    bool readBlock(std::uint32_t left)
    {
        constexpr int stopAtErrors = 1;
        std::vector<std::uint32_t>& block = blockAt(left);
        block.resize(std::size_t{m_blockWidth} * m_blockHeight);
        const int isRead = m_isTiled
                               ? TIFFReadRGBATileExt(m_file.get(), left, m_y, block.data(), stopAtErrors)
                               : TIFFReadRGBAStripExt(m_file.get(), m_y, block.data(), stopAtErrors);
        return isRead == 1 && !m_file.isDamaged();
    }

    // Blocks stand on their heads; the last strip is as high as what is left.
    void copyRow(std::uint32_t left, std::uint8_t* to)
    {
        const std::uint32_t y = m_y % m_blockHeight;
        const std::uint32_t rows = m_isTiled ? m_blockHeight : std::min(m_blockHeight, m_height - (m_y - y));
        const std::uint32_t* from = blockAt(left).data() + std::size_t{rows - 1 - y} * m_blockWidth;
        for (std::uint32_t x = 0; x < std::min(m_blockWidth, m_width - left); ++x, ++from) {
            *to++ = static_cast<std::uint8_t>(TIFFGetR(*from));
            *to++ = static_cast<std::uint8_t>(TIFFGetG(*from));
            *to++ = static_cast<std::uint8_t>(TIFFGetB(*from));
        }
    }

    TiffFile m_file;
    std::uint32_t m_width;
    std::uint32_t m_height;
    std::uint32_t m_blockWidth;
    std::uint32_t m_blockHeight = 0;
    bool m_isTiled;
    std::uint32_t m_y = 0;
    std::vector<std::vector<std::uint32_t>> m_blocks;
};

} // namespace

Result<std::unique_ptr<TiffRows>> openTiffColors(int descriptor, const TiffLayout& layout)
{
    auto file = TiffFile::open(descriptor);
    if (!file) return file.error();
    return std::unique_ptr<TiffRows>(std::make_unique<TiffColors>(std::move(*file), layout));
}

} // namespace lumora
