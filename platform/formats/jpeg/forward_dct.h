// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The cosine transform of a block of 8 x 8 samples, after Arai, Agui and Nakajima, "A fast DCT-SQ scheme for
// images", Transactions of the IEICE E71 (1988): five multiplications for eight samples, because what is left
// of them goes into the division by the quantisation steps. Any thread.
#pragma once

#include <array>

namespace lumora {

// By vertical frequency within each horizontal one: the place of (u, v) is u * 8 + v.
using DctBlock = std::array<float, 64>;

// Of the block whose first sample `rows` points to in each of its eight rows. Each result is too large by
// dctScale(u, v).
void forwardDct(const std::array<const float*, 8>& rows, DctBlock& frequencies);

float dctScale(int u, int v);

} // namespace lumora
