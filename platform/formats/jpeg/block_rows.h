// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// From a picture's rows to its coefficients, a row of blocks as soon as its samples are there. One thread.
#pragma once

#include "components/component_stream.h"
#include "jpeg/block_quantizer.h"
#include "jpeg/coefficient_shape.h"
#include "jpeg/progressive_file.h"

#include <cstdint>
#include <vector>

namespace lumora {

class BlockRows
{
public:
    // One coding for each component.
    BlockRows(const CoefficientShape& shape, const std::vector<ComponentCoding>& codings,
              ProgressiveFile& file);
    BlockRows(const BlockRows&) = delete;
    BlockRows& operator=(const BlockRows&) = delete;

    // The next row, of one grey component or of RGB.
    void add(const std::uint8_t* row) { m_components.add(row); }
    // After the last one.
    void finish() { m_components.finish(); }

private:
    void advance(int row);
    void writeBlocks(int row);
    void writeLuma(int row);
    void writeChroma(int component, int row);
    void findActivities(int row, float* activities) const;
    float colorActivity(int row, int column) const;

    CoefficientShape m_shape;
    ProgressiveFile& m_file;
    std::vector<BlockQuantizer> m_quantizers;
    int m_lumaBlocksAcross; // beyond the picture's edge too
    ComponentStream m_components;
    std::vector<float> m_activities;
    std::vector<std::int16_t> m_blocks; // of one component's row
};

} // namespace lumora
