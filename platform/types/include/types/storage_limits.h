// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a type of file can hold of a picture. What it cannot hold is converted; a picture with a longer edge
// than it allows cannot be stored at all.
#pragma once

namespace lumora {

enum class ProfileStorage { none, rgbOnly, any };

struct StorageLimits
{
    bool holdsSixteenBits = false; // a component; otherwise 8
    bool holdsGray = false;        // one component; otherwise three equal ones
    bool holdsInk = false;         // CMYK
    bool holdsAlpha = false;       // otherwise the picture is laid over white
    bool holdsAnyModel = false;    // Lab, floating point and the like
    // A picture whose profile cannot be held becomes sRGB.
    ProfileStorage profiles = ProfileStorage::none;
    int longestEdge = 0; // pixels; 0 for whatever can be decoded
};

} // namespace lumora
