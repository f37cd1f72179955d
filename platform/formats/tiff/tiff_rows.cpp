// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_rows.h"

namespace lumora {
namespace {

TiffDepth depthOf(const TiffLayout& layout)
{
    if (layout.sample == TiffSample::real) return TiffDepth::real;
    if (layout.hasPalette) return layout.bits == 16 ? TiffDepth::sixteen : TiffDepth::eight;
    if (layout.bits <= 8) return TiffDepth::eight;
    return layout.bits <= 16 ? TiffDepth::sixteen : TiffDepth::real;
}

} // namespace

TiffForm tiffForm(const TiffLayout& layout)
{
    if (layout.road == TiffRoad::colors) return {TiffDepth::eight, 3, 3};
    const int colors = layout.hasPalette ? 3 : layout.colors;
    return {depthOf(layout), colors, colors + layout.samples - layout.colors};
}

} // namespace lumora
