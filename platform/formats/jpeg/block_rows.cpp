// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_rows.h"

#include "jpeg/block_activity.h"
#include "jpeg/forward_dct.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumora {
namespace {

std::array<const float*, 8> blockAt(const RowRing& samples, int row, int column)
{
    std::array<const float*, 8> rows{};
    for (int y = 0; y < 8; ++y)
        rows[static_cast<std::size_t>(y)] =
            samples.row(8 * row + y) + static_cast<std::ptrdiff_t>(8) * column;
    return rows;
}

ChromaRows chromaOf(const CoefficientShape& shape)
{
    if (shape.components == 1) return ChromaRows::None;
    return shape.hasHalvedChroma ? ChromaRows::SharpenedMeans : ChromaRows::Full;
}

ComponentShape componentsOf(const CoefficientShape& shape)
{
    return {shape.width, shape.height, shape.paddedWidth(), shape.paddedHeight(), chromaOf(shape)};
}

} // namespace

BlockRows::BlockRows(const CoefficientShape& shape, const std::vector<ComponentCoding>& codings,
                     ProgressiveFile& file)
    : m_shape(shape), m_file(file), m_quantizers(codings.begin(), codings.end()),
      m_lumaBlocksAcross(shape.paddedWidth() / 8),
      m_components(componentsOf(shape), [this](int row) { advance(row); }),
      m_activities(static_cast<std::size_t>(2 * m_lumaBlocksAcross)),
      m_blocks(static_cast<std::size_t>(64 * m_lumaBlocksAcross))
{
}

// With full colour a row of blocks is ready a row later, which its last row's contrast looks at.
void BlockRows::advance(int row)
{
    if (m_shape.hasHalvedChroma) {
        if (row % 16 == 15) writeBlocks(row / 16);
        return;
    }
    const bool isLast = row + 1 == m_shape.paddedHeight();
    if (row > 0 && row % 8 == 0) writeBlocks(row / 8 - 1);
    if (isLast) writeBlocks(row / 8);
}

void BlockRows::writeBlocks(int row)
{
    if (m_shape.hasHalvedChroma) {
        writeLuma(2 * row);
        writeLuma(2 * row + 1);
    } else {
        writeLuma(row);
    }
    for (int component = 1; component < m_shape.components; ++component)
        writeChroma(component, row);
}

void BlockRows::findActivities(int row, float* activities) const
{
    BlockSurroundings rows{};
    for (int i = 0; i < 10; ++i)
        rows[static_cast<std::size_t>(i)] =
            m_components.luma().row(std::clamp(8 * row + i - 1, 0, m_shape.paddedHeight() - 1));
    blockActivities(rows, m_lumaBlocksAcross, activities);
}

void BlockRows::writeLuma(int row)
{
    float* const activities = m_activities.data() + (row % 2 == 0 ? 0 : m_lumaBlocksAcross);
    findActivities(row, activities);
    if (row >= m_shape.blocksDown(0)) return;
    std::int16_t* blocks = m_blocks.data();
    DctBlock frequencies;
    for (int x = 0; x < m_shape.blocksAcross(0); ++x, blocks += frequencies.size()) {
        forwardDct(blockAt(m_components.luma(), row, x), frequencies);
        m_quantizers[0].quantize(frequencies, activities[x], blocks);
    }
    m_file.add(0, m_blocks.data());
}

// Of the brightness that a block of colour lies under.
float BlockRows::colorActivity(int row, int column) const
{
    const auto across = static_cast<std::size_t>(m_lumaBlocksAcross);
    if (!m_shape.hasHalvedChroma)
        return m_activities[static_cast<std::size_t>(column) + (row % 2 == 0 ? 0 : across)];
    const std::size_t left = 2 * static_cast<std::size_t>(column);
    return (m_activities[left] + m_activities[left + 1] + m_activities[across + left] +
            m_activities[across + left + 1]) /
           4;
}

void BlockRows::writeChroma(int component, int row)
{
    std::int16_t* blocks = m_blocks.data();
    const RowRing& samples = m_components.chroma(component - 1);
    DctBlock frequencies;
    for (int x = 0; x < m_shape.blocksAcross(component); ++x, blocks += frequencies.size()) {
        forwardDct(blockAt(samples, row, x), frequencies);
        m_quantizers[static_cast<std::size_t>(component)].quantize(frequencies, colorActivity(row, x),
                                                                   blocks);
    }
    m_file.add(component, m_blocks.data());
}

} // namespace lumora
