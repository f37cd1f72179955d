// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How much a block of brightness hides of the errors in it: contrast masks errors, but only where it is
// everywhere in the block, because beside an edge the flat side shows them (Watson, "DCTune", SID Digest
// XXIV, 1993; Rosenholtz and Watson, "Perceptual adaptive JPEG coding", ICIP 1996). Any thread.
#pragma once

#include <array>

namespace lumora {

// The rows of a row of blocks, with the one above and the one below and a sample more on each side.
using BlockSurroundings = std::array<const float*, 10>;

// Of each of so many blocks, in powers of two over what is usual in photographs, from `leastActivity` to
// `mostActivity`.
void blockActivities(const BlockSurroundings& rows, int blocks, float* activities);

inline constexpr float leastActivity = -2;
inline constexpr float mostActivity = 3;

} // namespace lumora
