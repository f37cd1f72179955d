// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a picture as they are, mirrored, or turned upright. Any components; a pixel is so many bytes.
#pragma once

#include "pixels/image.h"
#include "pixels/row_stream.h"
#include "pixels/vips_library.h"
#include "resampler.h"

#include <cstddef>
#include <memory>

namespace lumora {

// As they are.
std::unique_ptr<RowMaker> passedRows(std::size_t rowBytes);

// Rows of the upright picture. `stored` is the size of the source. Rows that are only mirrored come one by
// one; every other turn holds the source's picture, once, from the first row to the last.
std::unique_ptr<RowMaker> turnedRows(PixelSize stored, std::size_t pixelBytes, Orientation orientation);

// The rows of the stored picture turned upright.
Result<VipsImagePtr> uprightPicture(_VipsImage* stored, Orientation orientation,
                                    const std::shared_ptr<ReadOutcome>& outcome);

} // namespace lumora
