// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a file holds of pictures, which tells what a copy of its first picture lacks. A value.
#pragma once

namespace lumora {

struct SourceFacts
{
    enum class Series { frames, pages, pictures };

    int pictures = 1; // in the file, small copies of the others not counted
    Series series = Series::pictures;
    int bits = 8; // of a component as stored; 8 for fewer, too
    bool hasAlpha = false;
    bool hasGainMap = false; // a second picture that tells how bright the first can become

    bool operator==(const SourceFacts&) const = default;
};

} // namespace lumora
