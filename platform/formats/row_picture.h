// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Lazy pictures out of decoders of our own, which hand out one row after another. Any thread.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

#include <cstdint>
#include <memory>

namespace lumora {

class RowSource
{
public:
    virtual ~RowSource() = default;
    // Fills in the next row; work that costs something waits for the first. May throw std::bad_alloc.
    virtual Status next(std::uint8_t* row) = 0;
};

// A picture whose rows come from the source, once and from the top down. `form` has all that is known of it
// but the rows, and its place in the image library's pipeline.
Result<VipsImagePtr> rowPicture(VipsImagePtr form, std::unique_ptr<RowSource> source);

} // namespace lumora
