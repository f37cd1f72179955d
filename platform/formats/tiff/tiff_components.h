// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of pictures whose samples are components, whatever their depth and kind. Deep and signed samples are
// scaled by the range that the file declares, otherwise by what their type can say; floating point without a
// declaration by 0 to 1 when the picture lies there, otherwise by its own extremes, for which the file is
// read once before.
#pragma once

#include "tiff/tiff_rows.h"

#include <memory>

namespace lumora {

// Throws std::bad_alloc.
Result<std::unique_ptr<TiffRows>> openTiffComponents(int descriptor, const TiffLayout& layout);

} // namespace lumora
