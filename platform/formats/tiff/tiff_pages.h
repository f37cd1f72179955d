// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

struct TiffPages
{
    int count = 0; // small copies of others left out
    int bits = 0;  // of a component of the first
};

// Of an open TIFF file, whose position stays where it is; all zero for a damaged one and for the layout of
// files above 4 GB. Any thread.
TiffPages tiffPages(int descriptor);

} // namespace lumora
