// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "components/component_stream.h"

#include "components/chroma_halving.h"
#include "components/component_rows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace lumora {
namespace {

// A row waits for what is known three pairs of rows later, and is looked at for ten more.
constexpr int fullRows = 32;
constexpr int halfRows = 16;

} // namespace

ComponentStream::ComponentStream(const ComponentShape& shape, Taker take)
    : m_shape(shape), m_take(std::move(take)), m_luma(shape.paddedWidth, fullRows)
{
    if (!isColor()) return;
    m_color.assign(2, RowRing(m_luma.width(), fullRows));
    if (!m_shape.isHalved()) return;
    m_means.assign(2, RowRing(m_luma.width() / 2, halfRows));
    if (m_shape.chroma == ChromaRows::SharpenedMeans) m_sharp = m_means;
    m_shown.assign(2, RowRing(m_luma.width(), 1));
}

const RowRing& ComponentStream::chroma(int difference) const
{
    const auto index = static_cast<std::size_t>(difference);
    if (m_shape.chroma == ChromaRows::Full) return m_color[index];
    return m_shape.chroma == ChromaRows::Means ? m_means[index] : m_sharp[index];
}

void ComponentStream::add(const std::uint8_t* row)
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

void ComponentStream::finish()
{
    while (m_rows < m_shape.paddedHeight) {
        m_luma.copyRow(m_rows - 1, m_rows);
        for (RowRing& color : m_color)
            color.copyRow(m_rows - 1, m_rows);
        advance();
    }
    if (!m_shape.isHalved()) return;
    const int pairs = m_shape.paddedHeight / 2;
    store(pairs - 1);
    if (pairs >= 2) settle(pairs - 2);
    settle(pairs - 1);
}

void ComponentStream::advance()
{
    const int y = m_rows++;
    if (!m_shape.isHalved()) {
        m_take(y);
        return;
    }
    if (y % 2 == 0) return;
    const int pair = y / 2;
    halve(pair);
    if (pair >= 1) store(pair - 1);
    if (pair >= 2) settle(pair - 2);
}

void ComponentStream::halve(int pair)
{
    for (std::size_t i = 0; i < 2; ++i) {
        RowRing& means = m_means[i];
        halveRows(m_color[i].row(2 * pair), m_color[i].row(2 * pair + 1), means.width(), means.row(pair));
        means.extend(pair, means.width());
    }
}

void ComponentStream::store(int pair)
{
    if (m_sharp.empty()) return;
    const int above = std::max(pair - 1, 0);
    const int below = std::min(pair + 1, m_shape.paddedHeight / 2 - 1);
    for (std::size_t i = 0; i < 2; ++i) {
        const RowRing& means = m_means[i];
        sharpenRow(means.row(above), means.row(pair), means.row(below), means.width(), m_sharp[i].row(pair));
        m_sharp[i].extend(pair, means.width());
    }
}

// Gives both rows of a pair the brightness that goes with its stored colours.
void ComponentStream::settle(int pair)
{
    const int neighbors[] = {std::max(pair - 1, 0), std::min(pair + 1, m_shape.paddedHeight / 2 - 1)};
    for (int lower = 0; lower < 2; ++lower) {
        const int y = 2 * pair + lower;
        for (int i = 0; i < 2; ++i)
            doubleRow(chroma(i).row(pair), chroma(i).row(neighbors[lower]), chroma(i).width(),
                      m_shown[static_cast<std::size_t>(i)].row(0));
        keepLight({m_color[0].row(y), m_color[1].row(y)}, {m_shown[0].row(0), m_shown[1].row(0)},
                  m_luma.width(), m_luma.row(y));
        m_luma.extend(y, m_luma.width());
        m_take(y);
    }
}

} // namespace lumora
