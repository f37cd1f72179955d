// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The BMP reader as a lazy picture of the image library. Any thread.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

namespace lumora {

// Reads the file into memory and decodes rows when they are asked for. The descriptor stays the caller's.
Result<VipsImagePtr> loadBmp(int descriptor);

} // namespace lumora
