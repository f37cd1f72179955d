// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The decoders behind the readable types. For the codec layer only; any thread.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

#include <string_view>

namespace lumora {

// The first picture of an open file as a lazy image to be read once from the top down. Data that the decoder
// reports as truncated or in error fails, here or when rows are read; mere warnings pass. The descriptor
// stays the caller's.
Result<VipsImagePtr> loadFirstPicture(std::string_view typeIdentifier, int descriptor);

// The picture of an open JPEG at 1/divisor (2, 4, 8) of its size, rounded up, as its codec can compute it
// from the lower frequencies alone. Otherwise like the above.
Result<VipsImagePtr> loadReducedJpeg(int divisor, int descriptor);

} // namespace lumora
