// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// From a picture's rows to its coefficients, a row of blocks as soon as its samples are there. One thread.
#pragma once

#include "jpeg/block_quantizer.h"
#include "jpeg/coefficient_writer.h"
#include "jpeg/row_ring.h"

#include <cstdint>
#include <vector>

namespace lumora {

class BlockRows
{
public:
    // One coding for each component. The writer has been started.
    BlockRows(const CoefficientShape& shape, const std::vector<ComponentCoding>& codings,
              CoefficientWriter& writer);

    // The next row, of one grey component or of RGB.
    void add(const std::uint8_t* row);
    // After the last one.
    void finish();
    // Whether the writer took everything so far.
    bool isGood() const { return m_isGood; }

private:
    bool isColor() const { return m_shape.components == 3; }
    void advance();
    void halve(int pair);
    void sharpen(int pair);
    void settle(int pair);
    void writeBlocks(int row);
    void writeLuma(int row);
    void writeChroma(int component, const RowRing& samples, int row);
    void findActivities(int row, float* activities) const;
    float colorActivity(int row, int column) const;

    CoefficientShape m_shape;
    CoefficientWriter& m_writer;
    std::vector<BlockQuantizer> m_quantizers;
    int m_paddedHeight;
    RowRing m_luma;
    std::vector<RowRing> m_color; // of the two differences: at full resolution,
    std::vector<RowRing> m_means; // halved,
    std::vector<RowRing> m_sharp; // as stored,
    std::vector<RowRing> m_shown; // and as decoders will show them
    std::vector<float> m_activities;
    int m_rows = 0;
    bool m_isGood = true;
};

} // namespace lumora
