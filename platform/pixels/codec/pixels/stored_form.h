// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a picture's file stored that its decoded components no longer tell, so that a picture that is not
// redrawn can keep it. Any thread.
#pragma once

#include "pixels/vips_library.h"

#include <string_view>

namespace lumora {

struct StoredForm
{
    bool isIndexed = false;           // colours of a palette
    int bits = 8;                     // a component's or an index's: 1, 2, 4, 8 or 16
    bool hasTransparentColor = false; // pixels of one colour are transparent, the others are opaque
};

// Kept as fields of the picture, which copies and turned copies of it inherit.
StoredForm storedForm(_VipsImage* image);

// What of the metadata says something of the components: these notes and the colour profile.
bool isComponentField(std::string_view field);
void copyComponentFields(_VipsImage* from, _VipsImage* to);

// Notes that the file stored one grey component in this many bits; the image library widens it without a
// word.
void noteGrayBits(_VipsImage* image, int bits);
// Notes that the file stored no alpha but one colour that stands for transparent pixels.
void noteTransparentColor(_VipsImage* image);

} // namespace lumora
