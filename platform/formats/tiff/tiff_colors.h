// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of pictures whose samples are no plain components (brightness and colour differences at a lower
// resolution, logarithms), as the TIFF library converts them to RGB. Holds one strip or one row of tiles.
#pragma once

#include "tiff/tiff_rows.h"

#include <memory>

namespace lumora {

// Throws std::bad_alloc.
Result<std::unique_ptr<TiffRows>> openTiffColors(int descriptor, const TiffLayout& layout);

} // namespace lumora
