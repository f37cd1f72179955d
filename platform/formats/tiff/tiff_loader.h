// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A TIFF file as a lazy picture of the image library. Any thread.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

namespace lumora {

// As FormatReader::load. Components that do not fit into 16 bits become floating point from 0 to 1. Fails for
// samples that nobody reads rightly.
Result<VipsImagePtr> loadTiff(int descriptor);

} // namespace lumora
