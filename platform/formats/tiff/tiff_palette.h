// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The colours of a TIFF picture that stores their numbers. Thread-safe for different files.
#pragma once

#include "tiff/tiff_file.h"

#include <array>
#include <vector>

namespace lumora {

// Red, green and blue from 0 to 1.
using TiffPalette = std::vector<std::array<double, 3>>;

// 2 to the power of `bits` colours; empty without a palette. Throws std::bad_alloc.
TiffPalette tiffPalette(const TiffFile& file, int bits);

} // namespace lumora
