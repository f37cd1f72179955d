// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace lumora {

// Packets above this many bytes are not read.
inline constexpr std::size_t largestXmp = std::size_t{1} << 24U;

} // namespace lumora
