// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace lumora {

// A picture that is to be encoded, as far as that is known before it has been decoded.
struct EncodedShape
{
    std::int64_t pixels;
    int pixelBytes; // of one as it is held, at most
    int quality;    // 1 to 100
    bool keepsMetadata;
};

} // namespace lumora
