// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace lumora {

// A rectangle of a picture that is drawn at some size.
struct PicturePart
{
    std::int32_t width = 0; // of the whole drawing, each at most the picture's own
    std::int32_t height = 0;
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t columns = 0;
    std::int32_t rows = 0;

    bool operator==(const PicturePart&) const = default;
};

} // namespace lumora
