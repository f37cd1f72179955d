// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/drop_window_heights.h"

#include <algorithm>

namespace lumora {
namespace {

constexpr int usualSpacing = 18;
constexpr int leastSpacing = 8;

// Takes what it can of the shortage from `length`.
void giveWay(int& length, int least, int& shortage)
{
    const int given = std::clamp(shortage, 0, std::max(0, length - least));
    length -= given;
    shortage -= given;
}

DropWindowHeights share(const DropWindowLengths& lengths)
{
    const int room = lengths.available - lengths.fixed - lengths.gaps * usualSpacing - lengths.results;
    DropWindowHeights heights{usualSpacing, std::max(room, lengths.leastZone), lengths.results};
    int shortage = heights.zone - room;
    giveWay(heights.results, lengths.leastResults, shortage);
    if (shortage > 0) {
        heights.spacing = std::max(leastSpacing, usualSpacing - (shortage + lengths.gaps - 1) / lengths.gaps);
        shortage -= (usualSpacing - heights.spacing) * lengths.gaps;
    }
    giveWay(heights.zone, lengths.slimZone, shortage);
    giveWay(heights.results, 0, shortage);
    return heights;
}

bool isTooLow(const DropWindowHeights& heights, const DropWindowLengths& lengths)
{
    return heights.zone < lengths.leastZone || heights.results < lengths.leastResults;
}

} // namespace

DropWindowHeights dropWindowHeights(const DropWindowLengths& lengths)
{
    DropWindowLengths left = lengths;
    DropWindowHeights heights = share(left);
    const bool hasResults = lengths.results > 0;
    for (const bool isFooter : {true, false}) {
        const int part = isFooter ? lengths.footer : lengths.strip;
        if (!hasResults || part == 0 || !isTooLow(heights, lengths)) continue;
        left.fixed -= part;
        --left.gaps;
        heights = share(left);
        heights.footer = false;
        heights.strip = isFooter;
    }
    return heights;
}

} // namespace lumora
