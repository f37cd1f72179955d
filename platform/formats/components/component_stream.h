// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture's rows as the brightness and the colour differences that a codec stores, at full resolution or
// with colour at half of it (chroma_halving.h), beyond the picture's edges too as far as the codec's blocks
// reach. One thread.
#pragma once

#include "components/row_ring.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lumora {

enum class ChromaRows {
    None, // of a grey picture
    Full,
    Means, // of squares of four
    SharpenedMeans
};

struct ComponentShape
{
    int width;
    int height;
    // Multiples of 16 where colour is halved.
    int paddedWidth;
    int paddedHeight;
    ChromaRows chroma;

    bool isHalved() const { return chroma == ChromaRows::Means || chroma == ChromaRows::SharpenedMeans; }
};

class ComponentStream
{
public:
    // Gets the number of each row whose samples are as they are to be stored, from the top down; of halved
    // colours those of an odd row's pair have come with it. They stay for 10 rows more.
    using Taker = std::function<void(int row)>;

    ComponentStream(const ComponentShape& shape, Taker take);

    // The next row, of one grey component or of RGB.
    void add(const std::uint8_t* row);
    // After the last one.
    void finish();

    const RowRing& luma() const { return m_luma; }
    // Of the blue (0) or red (1) difference; of halved ones row n goes with the picture's rows 2n and 2n + 1.
    const RowRing& chroma(int difference) const;

private:
    bool isColor() const { return m_shape.chroma != ChromaRows::None; }
    void advance();
    void halve(int pair);
    void store(int pair);
    void settle(int pair);

    ComponentShape m_shape;
    Taker m_take;
    RowRing m_luma;
    std::vector<RowRing> m_color; // of the two differences: at full resolution,
    std::vector<RowRing> m_means; // halved,
    std::vector<RowRing> m_sharp; // sharpened,
    std::vector<RowRing> m_shown; // and as decoders will show them
    int m_rows = 0;
};

} // namespace lumora
