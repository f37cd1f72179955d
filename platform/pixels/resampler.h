// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Reducing a picture by the Lanczos-3 kernel, in bands of rows, so that neither the source nor an
// intermediate of its size is ever held. Components are treated as they are stored (gamma-encoded), which is
// what people expect of a picture made smaller and what every viewer does; alpha must be premultiplied.
// Stateless; thread-safe.
#pragma once

#include "pixels/draw_error.h"
#include "pixels/row_reader.h"
#include "system/result.h"

#include <cstdint>
#include <functional>

namespace lumora {

struct PixelSize
{
    int width;
    int height;

    bool operator==(const PixelSize&) const = default;
};

// The picture to reduce, as its rows come. It may end within the last column and row: so it does when a
// decoder has halved an odd size.
struct SourceShape
{
    PixelSize rows;
    double width;
    double height;
};

// `count` rows from row `first` on, valid until the next request. Every row is asked for once, from the top
// down.
using RowProvider = std::function<Result<RowSpan>(int first, int count)>;
// Takes `count` finished rows, tightly packed, which begin at row `first` of the result; called from the top
// down. The consumer may change the rows.
using RowConsumer = std::function<void(int first, int count, std::uint8_t* rows)>;

// Interleaved 8-bit components, 1 to 4 bands on both sides. Reads the last row too where no row of the result
// needs it. Fails with the provider's error, and as inconvertible for sizes that the resampling library
// refuses.
Result<Done, DrawError> resample(const RowProvider& source, const SourceShape& from, PixelSize to, int bands,
                                 const RowConsumer& sink);

} // namespace lumora
