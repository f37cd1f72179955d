// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a picture's file stored that its decoded components no longer tell, so that a picture that is not
// redrawn can keep it. For the codec layer only.
#pragma once

#include "metadata/metadata.h"
#include "pixels/vips_library.h"

#include <string_view>

namespace lumora {

struct StoredForm
{
    bool isIndexed = false; // colours of a palette
    int bits = 8;           // a component's or an index's: 1, 2, 4, 8 or 16
};

// Kept as fields of the picture, which copies and turned copies of it inherit.
StoredForm storedForm(_VipsImage* image);
bool isStoredFormField(std::string_view field);

// Both note the form of a grey picture, which the image library widens without saying so. The descriptor
// stays the caller's; the properties are those read from the file.
void noteFormOfPng(_VipsImage* image, int descriptor);
void noteFormOfTiff(_VipsImage* image, const ImageProperties& properties);

} // namespace lumora
