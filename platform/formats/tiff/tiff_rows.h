// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a TIFF picture from the top down, as the rest of the program understands them. One thread at a
// time.
#pragma once

#include "system/result.h"
#include "tiff/tiff_layout.h"

#include <cstdint>

namespace lumora {

enum class TiffDepth { eight, sixteen, real }; // bits a component; 32-bit floating point from 0 to 1

struct TiffForm
{
    TiffDepth depth;
    int colors; // 1 grey, 3 RGB, 4 inks
    int bands;  // the colours, then straight alpha and whatever else a pixel has
};

class TiffRows
{
public:
    virtual ~TiffRows() = default;
    // The next row. Fails where it is damaged or missing. Throws std::bad_alloc.
    virtual Status read(std::uint8_t* row) = 0;
};

// Of the rows of a picture that is read by a road of our own.
TiffForm tiffForm(const TiffLayout& layout);

} // namespace lumora
