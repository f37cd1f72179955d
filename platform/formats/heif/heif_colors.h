// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixels/vips_library.h"

namespace lumora {

// The picture of this file with the profile of the colours that its container describes by numbers, where it
// holds no profile. Any thread.
VipsImagePtr withHeifColors(VipsImagePtr image, int descriptor);

} // namespace lumora
