// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The division of a block's frequencies by the steps of a component. What is small against its step becomes
// zero, the sooner the more the block hides: one table of steps serves all blocks of a picture, and this is
// what adapts it to each (Crouse and Ramchandran, "Joint thresholding and quantizer selection for transform
// image coding", IEEE Transactions on Image Processing 6, 1997). Any thread.
#pragma once

#include "jpeg/forward_dct.h"

#include <array>
#include <cstdint>

namespace lumora {

// By frequency, row by row.
template <class T>
using FrequencyTable = std::array<T, 64>;

struct ComponentCoding
{
    FrequencyTable<std::uint16_t> steps; // 1 to 255
    FrequencyTable<float> zeroBelow;     // in steps
    FrequencyTable<float> zeroBelowRise; // with each power of two of the block's activity
    float mostZeroBelow;                 // whatever the activity
    float roundUpFrom;                   // a fraction of a step above the first
    float roundUpRise;
};

class BlockQuantizer
{
public:
    explicit BlockQuantizer(const ComponentCoding& coding);

    // `activity` as blockActivities() gives it; the result is in the order of zigzag.h.
    void quantize(const DctBlock& frequencies, float activity, std::int16_t* coefficients) const;

private:
    // In the order of the transform's results.
    DctBlock m_inverseSteps{};
    DctBlock m_zeroBelow{};
    DctBlock m_zeroBelowRise{};
    float m_mostZeroBelow;
    float m_roundUpFrom;
    float m_roundUpRise;
};

} // namespace lumora
