// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture made upright, or taken into memory, as it is. Thread-safe for different pictures.
#pragma once

#include "pixels/image.h"
#include "system/result.h"

namespace lumora {

// The upright picture with its own depth, colour model and profile, its rows still to be decoded. Rows that
// are only mirrored come one by one; any other turn holds the stored picture from the first row on.
Result<Image> turned(const Image& image);

// The upright picture in memory, as it is or as it is drawn. Returns an image in memory as it is. Fails when
// the codec reports the data as truncated or damaged. Uses up the rows of a picture that is not in memory.
Result<Image> decode(const Image& image);

// Makes every row and keeps none: fails and uses up rows as decode() does.
Status readThrough(const Image& image);

} // namespace lumora
