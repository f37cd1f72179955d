// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Bringing a picture into the form in which a type stores it. Thread-safe for different pictures.
#pragma once

#include "pixels/image.h"
#include "pixels/vips_library.h"
#include "system/result.h"
#include "types/storage_limits.h"

namespace lumora {

// Straight alpha. A redrawn bitmap comes in its smallest lossless form: without alpha when every pixel is
// opaque, as one gray component when all three are equal. Everything else keeps depth and model where the
// limits allow (floating point becomes 16 bits where only these are held), and is redrawn in 8 bits where
// they do not. The attached profile stays attached where it still describes the components and can be held,
// otherwise the colours become sRGB; other metadata goes, and 72 dots an inch stand for an unknown
// resolution. The rows of a picture that is not in memory are still to be made, but for those that decide the
// smallest form: fails when one of these is damaged.
Result<VipsImagePtr> storableImage(const Image& image, const StorageLimits& limits);

} // namespace lumora
