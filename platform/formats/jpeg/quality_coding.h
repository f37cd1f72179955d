// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a quality means for each component. Any thread.
#pragma once

#include "jpeg/block_quantizer.h"
#include "jpeg/tuned_coding.h"

#include <vector>

namespace lumora {

enum class JpegComponent { brightness, blueDifference, redDifference };

// `quality` is 1 to 100; colour may be stored at half the resolution.
ComponentCoding codingOf(JpegComponent component, int quality, bool hasFullChroma);
// The same for a picture of one component or of three.
std::vector<ComponentCoding> codingsOf(int components, int quality, bool hasFullChroma);

// Tuned numbers with steps of this scale.
ComponentCoding scaledCoding(const TunedCoding& tuned, JpegComponent component, float scale);

} // namespace lumora
