// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A drawn bitmap in its smallest lossless form, as rows. Whether a component can go is known only when the
// last pixel has been seen that needs none; the rows until then are kept, each in the smallest form of its
// own: most pictures show a colour in the first ones, and a gray one is kept whole at a byte a pixel.
#pragma once

#include "pixels/row_stream.h"
#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace lumora {

struct CompactForm
{
    bool isGray;
    bool isOpaque;

    std::size_t bands() const { return (isGray ? 1U : 3U) + (isOpaque ? 0U : 1U); }
};

class CompactRows : public RowMaker
{
public:
    // `bitmap` is 8-bit RGB, or RGBA premultiplied: then alpha is kept, made straight, until every pixel
    // turns out opaque, or the bitmap is laid over white. Reads it from the top on until the form is settled;
    // fails when it is damaged there.
    static Result<std::unique_ptr<CompactRows>> open(_VipsImage* bitmap, bool keepsAlpha, bool mayBeGray);

    // Of the rows that are made.
    StreamForm form() const;

    // `source` gives the rows of the bitmap, and only those behind the ones that were read already.
    Status make(const RowProvider& source, int first, int count, std::uint8_t* rows) override;

private:
    struct Strip
    {
        CompactForm form;
        std::vector<std::uint8_t> bytes;
    };

    CompactRows(_VipsImage* bitmap, bool keepsAlpha, bool mayBeGray);
    Status settle(_VipsImage* bitmap);
    bool isSettled() const;
    void loadStraight(const RowSpan& rows, int count);
    CompactForm formOfLoaded() const;

    std::size_t m_bands; // of the bitmap
    bool m_keepsAlpha;
    int m_height;
    std::size_t m_width;
    CompactForm m_form;
    std::vector<std::uint8_t> m_strip; // of the bitmap, straight
    std::vector<Strip> m_read;         // given up as they are made
};

} // namespace lumora
