// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The list of what a HEIF file holds, which its decoder keeps to itself. Layout: ISO/IEC 14496-12. Any
// thread; throws std::bad_alloc.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace lumora {

// How colours became components, by the code of ITU-T H.273.
struct ColorCoding
{
    unsigned matrix;
    bool isFullRange;

    // As photographs': ITU-R BT.601 without room above and below.
    bool isUsual() const { return (matrix == 5 || matrix == 6) && isFullRange; }
};

struct HeifItems
{
    std::uint32_t primary = 0;                  // the number of the picture that is meant
    std::map<std::uint32_t, std::string> types; // of every item, in four letters
    std::vector<ColorCoding> codings = {};      // all that the container speaks of, whichever item's

    // The decoder's name for what the picture is coded with, "hevc" or "av1"; empty when it is another or
    // unknown.
    std::string codec() const;
    bool contain(const std::string& type) const;
    // Whether the picture is coded by itself, not put together out of others.
    bool isOnePiece() const;
};

// Empty when the file is damaged. Its position stays where it is.
HeifItems heifItems(int descriptor);

} // namespace lumora
