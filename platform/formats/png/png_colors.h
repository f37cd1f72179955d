// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixels/vips_library.h"

namespace lumora {

// The picture of this file with the profile of the colours that its chunks describe by numbers, where they
// count: cICP before a profile, a profile before sRGB, sRGB before gAMA and cHRM. Any thread.
VipsImagePtr withPngColors(VipsImagePtr image, int descriptor);

} // namespace lumora
