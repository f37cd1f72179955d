// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "metadata/metadata.h"
#include "pixels/vips_library.h"

namespace lumora {

// Attach the profile of colours that fields describe, unless there is one. Any thread.
//
// Cameras set to Adobe RGB say so in the index of their interoperability rules and embed no profile.
void attachCameraColors(_VipsImage* image, const Metadata& metadata);
// WhitePoint and PrimaryChromaticities of a TIFF, with the power of 2.2 that it means by default.
void attachTiffColors(_VipsImage* image, const Metadata& metadata);

} // namespace lumora
