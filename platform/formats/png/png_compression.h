// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The pixels of a PNG file in few bytes. Any thread; throws std::bad_alloc.
#pragma once

#include "png/deflation.h"
#include "png/png_filter.h"
#include "png/png_layout.h"

namespace lumora {

struct Compression
{
    RowFilters filters;
    Search search;
};

// What makes a sample of the rows small in reasonable time. Where that needs another order of the palette,
// the layout has it from then on.
Compression bestCompression(PngLayout& layout);

// Uses the pixels up.
Status compressRows(PngLayout& layout, Compression compression, const StreamTaker& take);

} // namespace lumora
