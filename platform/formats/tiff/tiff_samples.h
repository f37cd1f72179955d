// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Packed samples of every depth and kind as numbers, and the range that they mean. Pure; any thread.
#pragma once

#include "tiff/tiff_layout.h"

#include <cstdint>
#include <span>

namespace lumora {

// The number at `index` of a row in which every sample takes `bits` bits, the first ones highest in a byte;
// samples of whole bytes are in the machine's order, as the TIFF library hands them out.
double tiffSample(std::span<const std::uint8_t> row, std::size_t index, TiffSample sample, int bits);

struct SampleRange
{
    double black = 0;
    double white = 1;
};

// All that the type can say; 0 to 1 of floating point.
SampleRange wholeRange(TiffSample sample, int bits);

} // namespace lumora
