// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture: either pixels in memory or the promise of rows, which are decoded or drawn once, in order, when
// they are first needed. The promise lets decoding, scaling and colour conversion run as one
// pass over strips, so that memory follows the size of the result and not of the file. A value that shares
// its pixels; those in memory never change, the rows of a promise go to one thread.
#pragma once

#include "pixels/read_outcome.h"
#include "system/result.h"

#include <cstdint>
#include <functional>
#include <memory>

struct _VipsImage;

namespace lumora {

// The EXIF numbering: 1 upright, 2 to 4 mirrored or turned by 180 degrees, 5 to 8 with the axes swapped.
using Orientation = int;

// Opens the picture again at 1/divisor of its size, rounded up; 2, 4 or 8. The result is a new reference.
using ReducedDecoding = std::function<Result<_VipsImage*>(int divisor)>;

enum class ImageState {
    pending, // of an opened file, its rows not decoded yet
    drawing, // 8-bit RGB, or RGBA premultiplied; its rows not made yet
    decoded, // pixels in memory as the file has them, straight alpha
    drawn,   // a bitmap in memory, as `drawing`
};

class Image
{
public:
    // Takes over one reference to `pixels`, which are as stored.
    Image(_VipsImage* pixels, Orientation pendingOrientation, ImageState state);

    // Pixels of the upright picture.
    std::int64_t width() const;
    std::int64_t height() const;

    // Of one pixel as stored.
    int storedPixelBytes() const;

    // The turn that the stored pixels still need; 1 for every image in memory.
    Orientation pendingOrientation() const { return m_orientation; }
    ImageState state() const { return m_state; }
    bool isInMemory() const { return m_state == ImageState::decoded || m_state == ImageState::drawn; }
    bool alphaIsPremultiplied() const
    {
        return m_state == ImageState::drawn || m_state == ImageState::drawing;
    }

    // Tells, once somebody has taken the rows of a turned or drawn picture, whether these were what failed.
    // Null for other pictures.
    const std::shared_ptr<ReadOutcome>& outcome() const { return m_outcome; }
    // Likewise, for the rows that are made out of this picture's; never null.
    std::shared_ptr<ReadOutcome> outcomeToCome() const;
    Image withOutcome(std::shared_ptr<ReadOutcome> outcome) const;

    // Lets a picture that is not decoded yet be decoded at a half, a quarter or an eighth of its size: faster
    // by far, and where a much smaller picture is wanted no worse.
    Image withReducedDecoding(ReducedDecoding decoding) const;
    // The picture at 1/divisor of its size, not decoded yet; the picture itself when it knows no such
    // decoding. Fails when the file cannot be opened so.
    Result<Image> reduced(int divisor) const;

    // The same picture with another pending turn.
    Image withPendingOrientation(Orientation orientation) const;
    // The same picture without an embedded colour profile; its colours count as sRGB from then on.
    Image withoutProfile() const;

    // As stored, still this picture's. Bands, format, interpretation and the attached profile are those of
    // the picture.
    _VipsImage* pixels() const { return m_pixels.get(); }

    friend bool operator==(const Image&, const Image&) = default;

private:
    std::shared_ptr<_VipsImage> m_pixels;
    std::shared_ptr<const ReducedDecoding> m_reducedDecoding;
    std::shared_ptr<ReadOutcome> m_outcome;
    Orientation m_orientation;
    ImageState m_state;
};

} // namespace lumora
