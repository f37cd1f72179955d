// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Colour profiles as their bytes. Thread-safe.
#pragma once

#include "pixels/row_reader.h"

#include <cstdint>
#include <span>

namespace lumora {

using ProfileBytes = std::span<const std::uint8_t>;

// Whether the bytes are a profile that describes components of this model.
bool describes(ProfileBytes profile, ColorModel model);

} // namespace lumora
