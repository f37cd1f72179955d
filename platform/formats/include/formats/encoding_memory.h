// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "formats/encoded_shape.h"

#include <cstdint>
#include <string_view>

namespace lumora {

// About how many bytes encoding to a type takes besides a few rows, an external encoder's included. 0 for a
// type that is not written. Pure function; thread-safe.
std::int64_t encodingMemory(std::string_view typeIdentifier, const EncodedShape& shape);

} // namespace lumora
