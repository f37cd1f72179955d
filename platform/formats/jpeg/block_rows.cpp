// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_rows.h"

#include "jpeg/block_activity.h"
#include "jpeg/chroma_halving.h"
#include "jpeg/component_rows.h"
#include "jpeg/forward_dct.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumora {
namespace {

// Rows of blocks wait for what is known three pairs of rows later.
constexpr int fullRows = 32;
constexpr int halfRows = 16;

std::array<const float*, 8> blockAt(const RowRing& samples, int row, int column)
{
    std::array<const float*, 8> rows{};
    for (int y = 0; y < 8; ++y)
        rows[static_cast<std::size_t>(y)] =
            samples.row(8 * row + y) + static_cast<std::ptrdiff_t>(8) * column;
    return rows;
}

} // namespace

BlockRows::BlockRows(const CoefficientShape& shape, const std::vector<ComponentCoding>& codings,
                     CoefficientWriter& writer)
    : m_shape(shape), m_writer(writer), m_quantizers(codings.begin(), codings.end()),
      m_paddedHeight(8 * writer.blocksDown(0)), m_luma(8 * writer.blocksAcross(0), fullRows),
      m_activities(static_cast<std::size_t>(2 * writer.blocksAcross(0)))
{
    if (!isColor()) return;
    m_color.assign(2, RowRing(m_luma.width(), fullRows));
    if (!shape.hasHalvedChroma) return;
    m_means.assign(2, RowRing(m_luma.width() / 2, halfRows));
    m_sharp = m_means;
    m_shown.assign(2, RowRing(m_luma.width(), 1));
}

void BlockRows::add(const std::uint8_t* row)
{
    const int y = m_rows;
    if (isColor()) {
        rgbToComponents(row, m_shape.width, m_luma.row(y), m_color[0].row(y), m_color[1].row(y));
        for (RowRing& color : m_color)
            color.extend(y, m_shape.width);
    } else {
        grayToComponent(row, m_shape.width, m_luma.row(y));
    }
    m_luma.extend(y, m_shape.width);
    advance();
}

void BlockRows::finish()
{
    while (m_rows < m_paddedHeight) {
        m_luma.copyRow(m_rows - 1, m_rows);
        for (RowRing& color : m_color)
            color.copyRow(m_rows - 1, m_rows);
        advance();
    }
    if (!m_shape.hasHalvedChroma) return;
    const int pairs = m_paddedHeight / 2;
    sharpen(pairs - 1);
    settle(pairs - 2);
    settle(pairs - 1);
}

// With full colour a row of blocks is ready a row later, which its last row's contrast looks at.
void BlockRows::advance()
{
    const int y = m_rows++;
    if (!m_shape.hasHalvedChroma) {
        const bool isLast = m_rows == m_paddedHeight;
        if (y > 0 && y % 8 == 0) writeBlocks(y / 8 - 1);
        if (isLast) writeBlocks(y / 8);
        return;
    }
    if (y % 2 == 0) return;
    const int pair = y / 2;
    halve(pair);
    if (pair >= 1) sharpen(pair - 1);
    if (pair >= 2) settle(pair - 2);
}

void BlockRows::halve(int pair)
{
    for (std::size_t i = 0; i < 2; ++i) {
        RowRing& means = m_means[i];
        halveRows(m_color[i].row(2 * pair), m_color[i].row(2 * pair + 1), means.width(), means.row(pair));
        means.extend(pair, means.width());
    }
}

void BlockRows::sharpen(int pair)
{
    const int above = std::max(pair - 1, 0);
    const int below = std::min(pair + 1, m_paddedHeight / 2 - 1);
    for (std::size_t i = 0; i < 2; ++i) {
        const RowRing& means = m_means[i];
        sharpenRow(means.row(above), means.row(pair), means.row(below), means.width(), m_sharp[i].row(pair));
        m_sharp[i].extend(pair, means.width());
    }
}

// Gives both rows of a pair the brightness that goes with its stored colours.
void BlockRows::settle(int pair)
{
    const int neighbors[] = {std::max(pair - 1, 0), std::min(pair + 1, m_paddedHeight / 2 - 1)};
    for (int lower = 0; lower < 2; ++lower) {
        const int y = 2 * pair + lower;
        for (std::size_t i = 0; i < 2; ++i)
            doubleRow(m_sharp[i].row(pair), m_sharp[i].row(neighbors[lower]), m_sharp[i].width(),
                      m_shown[i].row(0));
        keepLight({m_color[0].row(y), m_color[1].row(y)}, {m_shown[0].row(0), m_shown[1].row(0)},
                  m_luma.width(), m_luma.row(y));
        m_luma.extend(y, m_luma.width());
    }
    if (pair % 8 == 7) writeBlocks(pair / 8);
}

void BlockRows::writeBlocks(int row)
{
    if (m_shape.hasHalvedChroma) {
        writeLuma(2 * row);
        writeLuma(2 * row + 1);
    } else {
        writeLuma(row);
    }
    const std::vector<RowRing>& stored = m_shape.hasHalvedChroma ? m_sharp : m_color;
    for (std::size_t i = 0; i < stored.size(); ++i)
        writeChroma(static_cast<int>(i) + 1, stored[i], row);
}

void BlockRows::findActivities(int row, float* activities) const
{
    BlockSurroundings rows{};
    for (int i = 0; i < 10; ++i)
        rows[static_cast<std::size_t>(i)] = m_luma.row(std::clamp(8 * row + i - 1, 0, m_paddedHeight - 1));
    blockActivities(rows, m_writer.blocksAcross(0), activities);
}

void BlockRows::writeLuma(int row)
{
    std::int16_t* blocks = m_writer.blockRow(0, row);
    m_isGood = m_isGood && blocks;
    if (!m_isGood) return;
    const int across = m_writer.blocksAcross(0);
    float* const activities = m_activities.data() + (row % 2 == 0 ? 0 : across);
    findActivities(row, activities);
    DctBlock frequencies;
    for (int x = 0; x < across; ++x, blocks += frequencies.size()) {
        forwardDct(blockAt(m_luma, row, x), frequencies);
        m_quantizers[0].quantize(frequencies, activities[x], blocks);
    }
}

// Of the brightness that a block of colour lies under.
float BlockRows::colorActivity(int row, int column) const
{
    const auto across = static_cast<std::size_t>(m_writer.blocksAcross(0));
    if (!m_shape.hasHalvedChroma)
        return m_activities[static_cast<std::size_t>(column) + (row % 2 == 0 ? 0 : across)];
    const std::size_t left = 2 * static_cast<std::size_t>(column);
    return (m_activities[left] + m_activities[left + 1] + m_activities[across + left] +
            m_activities[across + left + 1]) /
           4;
}

void BlockRows::writeChroma(int component, const RowRing& samples, int row)
{
    std::int16_t* blocks = m_writer.blockRow(component, row);
    m_isGood = m_isGood && blocks;
    if (!m_isGood) return;
    DctBlock frequencies;
    for (int x = 0; x < m_writer.blocksAcross(component); ++x, blocks += frequencies.size()) {
        forwardDct(blockAt(samples, row, x), frequencies);
        m_quantizers[static_cast<std::size_t>(component)].quantize(frequencies, colorActivity(row, x),
                                                                   blocks);
    }
}

} // namespace lumora
