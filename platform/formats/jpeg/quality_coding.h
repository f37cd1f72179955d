// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a quality means for each component. Any thread.
#pragma once

#include "jpeg/block_quantizer.h"

namespace lumora {

enum class JpegComponent { brightness, blueDifference, redDifference };

// `quality` is 1 to 100; colour may be stored at half the resolution.
ComponentCoding codingOf(JpegComponent component, int quality, bool hasFullChroma);

} // namespace lumora
