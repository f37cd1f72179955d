// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/image.h"

#include "pixels/vips_library.h"

#include <vips/vips.h>

#include <utility>

namespace lumora {

Image::Image(_VipsImage* pixels, Orientation pendingOrientation, ImageState state)
    : m_pixels(pixels, VipsUnref{}), m_orientation(pendingOrientation), m_state(state)
{
}

std::int64_t Image::width() const
{
    return m_orientation >= 5 ? vips_image_get_height(pixels()) : vips_image_get_width(pixels());
}

std::int64_t Image::height() const
{
    return m_orientation >= 5 ? vips_image_get_width(pixels()) : vips_image_get_height(pixels());
}

int Image::storedPixelBytes() const
{
    return static_cast<int>(pixelBytesOf(pixels()));
}

Image Image::withPendingOrientation(Orientation orientation) const
{
    Image turned = *this;
    turned.m_orientation = orientation;
    return turned;
}

std::shared_ptr<ReadOutcome> Image::outcomeToCome() const
{
    return m_outcome ? m_outcome : std::make_shared<ReadOutcome>();
}

Image Image::withOutcome(std::shared_ptr<ReadOutcome> outcome) const
{
    Image told = *this;
    told.m_outcome = std::move(outcome);
    return told;
}

Image Image::withReducedDecoding(ReducedDecoding decoding) const
{
    Image reducible = *this;
    reducible.m_reducedDecoding = std::make_shared<const ReducedDecoding>(std::move(decoding));
    return reducible;
}

Result<Image> Image::reduced(int divisor) const
{
    if (!m_reducedDecoding) return *this;
    const auto pixels = (*m_reducedDecoding)(divisor);
    if (!pixels) return pixels.error();
    return Image(*pixels, m_orientation, m_state);
}

Image Image::withoutProfile() const
{
    VipsImage* copy = nullptr;
    if (vips_copy(pixels(), &copy, nullptr) != 0) return *this;
    vips_image_remove(copy, VIPS_META_ICC_NAME);
    return Image(copy, m_orientation, m_state).withOutcome(m_outcome);
}

} // namespace lumora
