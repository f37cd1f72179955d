// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures whose rows are made out of the rows of another picture when they are asked for, once and from the
// top down, so that a codec can take them as they come and nothing of the picture's size is held between.
#pragma once

#include "pixels/read_outcome.h"
#include "pixels/row_reader.h"
#include "pixels/vips_library.h"
#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace lumora {

// `count` rows from row `first` on, valid until the next request. Every row is asked for once, from the top
// down.
using RowProvider = std::function<Result<RowSpan>(int first, int count)>;

// Rows are made so many at once, fewer at the end of the picture.
inline constexpr int streamedRows = 64;

class RowMaker
{
public:
    virtual ~RowMaker() = default;
    // Fills in `count` rows from row `first` on, tightly packed. May throw std::bad_alloc. One call after
    // another, but not always on the same thread; `source` is good for this call only.
    virtual Status make(const RowProvider& source, int first, int count, std::uint8_t* rows) = 0;
};

// The form of the rows that are made; numbers of the image library.
struct StreamForm
{
    int width;
    int height;
    int bands;
    int format;
    int coding;
    int interpretation;
};

// The form of a picture of the image library.
StreamForm streamFormOf(_VipsImage* image);

// A picture of this form that has neither rows nor fields yet. Fails on edges longer than the image library
// takes, which would leave it at another size without a word.
Result<VipsImagePtr> newPicture(const StreamForm& form);

// Gives a picture that has its form, and its place in the image library's pipeline, rows that can be had
// once. The outcome takes the first failure. Without a source the maker is given none either. The source is
// the caller's to keep.
Status streamInto(_VipsImage* picture, _VipsImage* source, std::unique_ptr<RowMaker> maker,
                  std::shared_ptr<ReadOutcome> outcome);

// The lazy picture: like every other one of the image library, but for its rows, which can be had once. It
// keeps its source, and has no metadata yet.
Result<VipsImagePtr> streamedPicture(_VipsImage* source, const StreamForm& form,
                                     std::unique_ptr<RowMaker> maker, std::shared_ptr<ReadOutcome> outcome);

} // namespace lumora
