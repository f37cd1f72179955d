// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A JPEG file as a lazy picture of the image library. Any thread.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

namespace lumora {

// As FormatReader::loadReduced; at full size for a divisor of 1.
Result<VipsImagePtr> loadJpeg(int divisor, int descriptor);

} // namespace lumora
