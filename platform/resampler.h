// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Reducing a picture by the Lanczos-3 kernel, in bands of rows, so that neither the source nor an
// intermediate of its size is ever held. Components are treated as they are stored (gamma-encoded), which is
// what people expect of a picture made smaller and what every viewer does; alpha must be premultiplied. For
// the codec layer only.
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace lumora {

struct PixelSize
{
    int width;
    int height;

    bool operator==(const PixelSize&) const = default;
};

// Fills `rows` with `count` tightly packed rows from row `first` on. Every row is asked for once, from the
// top down.
using RowProvider = std::function<Status(int first, int count, std::uint8_t* rows)>;

// Interleaved 8-bit components, 1 to 4 bands, tightly packed; the result has the same bands.
Result<std::vector<std::uint8_t>> resample(const RowProvider& source, PixelSize from, PixelSize to,
                                           int bands);

} // namespace lumora
