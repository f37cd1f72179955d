// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string_view>

namespace lumora {

// A picture that is to be encoded, as far as that is known before it has been decoded.
struct EncodedShape
{
    std::int64_t pixels;
    int pixelBytes; // of one as it is held, at most
    int quality;    // 1 to 100
    bool keepsMetadata;
};

// About how many bytes encoding to a type takes besides a few rows, an external encoder's included. 0 for a
// type that is not written. Pure function; thread-safe.
std::int64_t encodingMemory(std::string_view typeIdentifier, const EncodedShape& shape);

} // namespace lumora
