// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the codec's pictures consist of. Any thread.
#pragma once

#include <cstdint>

struct de265_image;

namespace lumora {

// Whether some block of sixteen pixels a side, or what the edge of the picture leaves of it, has this value
// in every byte of all components; three pixels along its sides may differ. Smaller blocks are found
// sometimes.
bool hasBlockOf(std::uint8_t value, const de265_image* picture);

// Whether all their components are the same.
bool areSame(const de265_image* one, const de265_image* other);

} // namespace lumora
