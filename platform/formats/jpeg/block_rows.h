// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// From a picture's rows to its coefficients, a row of blocks as soon as its samples are there. One thread.
#pragma once

#include "components/component_stream.h"
#include "jpeg/block_quantizer.h"
#include "jpeg/coefficient_writer.h"

#include <cstdint>
#include <vector>

namespace lumora {

class BlockRows
{
public:
    // One coding for each component. The writer has been started.
    BlockRows(const CoefficientShape& shape, const std::vector<ComponentCoding>& codings,
              CoefficientWriter& writer);
    BlockRows(const BlockRows&) = delete;
    BlockRows& operator=(const BlockRows&) = delete;

    // The next row, of one grey component or of RGB.
    void add(const std::uint8_t* row) { m_components.add(row); }
    // After the last one.
    void finish() { m_components.finish(); }
    // Whether the writer took everything so far.
    bool isGood() const { return m_isGood; }

private:
    void advance(int row);
    void writeBlocks(int row);
    void writeLuma(int row);
    void writeChroma(int component, int row);
    void findActivities(int row, float* activities) const;
    float colorActivity(int row, int column) const;

    CoefficientShape m_shape;
    CoefficientWriter& m_writer;
    std::vector<BlockQuantizer> m_quantizers;
    int m_paddedHeight;
    ComponentStream m_components;
    std::vector<float> m_activities;
    bool m_isGood = true;
};

} // namespace lumora
