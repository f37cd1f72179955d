// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Colours that would lose too much if their components were cut to 8 bits before the conversion: those of 16
// bits under a profile, of which a linear one has hardly any steps in the shadows, and Lab. Thread-safe for
// different pictures.
#pragma once

#include "pixels/color_conversion.h"
#include "pixels/image.h"
#include "system/result.h"

namespace lumora {

// Such a picture in 8-bit sRGB, not decoded yet and without a profile; any other as it is. Converts as
// ColorConversion::toSrgb does, from Lab as from a profile.
Result<Image> withDeepColorsInSrgb(const Image& image, ProfileBytes profile);

} // namespace lumora
