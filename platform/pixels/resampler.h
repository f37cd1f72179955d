// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Reducing a picture by the Lanczos-3 kernel, in bands of rows, so that neither the source nor an
// intermediate of its size is ever held. Components are treated as they are stored (gamma-encoded), which is
// what people expect of a picture made smaller and what every viewer does; alpha must be premultiplied. One
// thread at a time.
#pragma once

#include "pixels/row_stream.h"
#include "system/result.h"

#include <cstdint>
#include <memory>

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

// One reduction, band by band. Interleaved 8-bit components, 1 to 4 bands on both sides.
class Resampler
{
public:
    static Result<Resampler> create(const SourceShape& from, PixelSize to, int bands);
    Resampler(Resampler&&) noexcept;
    Resampler& operator=(Resampler&&) noexcept;
    ~Resampler();

    // The next `count` rows of the result, tightly packed: `streamedRows`, and at the end what is left. With
    // the last of them the source has been read to its end, also where no row of the result needs that.
    // Fails with the source's error.
    Status next(const RowProvider& source, int count, std::uint8_t* rows);

private:
    struct State;
    explicit Resampler(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

} // namespace lumora
