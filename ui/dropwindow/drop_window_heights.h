// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Who gives way in a window too low for everything: the drop zone to its least height, then the rows of the
// results to one row, then the gaps; beside results then the footer and the statistics, as a whole; then the
// zone down to its status, at last the rows. The header never does. A pure function; lengths in logical
// pixels.
#pragma once

namespace lumora {

struct DropWindowLengths
{
    int available;    // inside the window's padding
    int fixed;        // header, statistics and footer together
    int gaps;         // number of gaps
    int leastZone;    // with all its content
    int slimZone;     // with the status alone
    int results;      // all they want; 0 when there are none
    int leastResults; // the totals and one row
    int strip = 0;    // the statistics' part of `fixed` that can go beside results
    int footer = 0;   // the footer's
};

struct DropWindowHeights
{
    int spacing;
    int zone;
    int results;
    bool strip = true; // whether it shows
    bool footer = true;

    bool operator==(const DropWindowHeights&) const = default;
};

DropWindowHeights dropWindowHeights(const DropWindowLengths& lengths);

} // namespace lumora
