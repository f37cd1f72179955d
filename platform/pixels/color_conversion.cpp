// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/color_conversion.h"

#include "color_library.h"

#include <lcms2.h>
#include <vips/vips.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

namespace lumora {
namespace {

cmsUInt32Number pixelTypeOf(RowFormat format)
{
    cmsUInt32Number type = BYTES_SH(1) | EXTRA_SH(format.hasAlpha ? 1U : 0U);
    switch (format.model) {
    case ColorModel::gray:
        return type | COLORSPACE_SH(PT_GRAY) | CHANNELS_SH(1);
    case ColorModel::rgb:
        return type | COLORSPACE_SH(PT_RGB) | CHANNELS_SH(3);
    case ColorModel::cmyk:
        break;
    }
    return type | COLORSPACE_SH(PT_CMYK) | CHANNELS_SH(4);
}

} // namespace

ProfileBytes srgbProfile()
{
    static const std::vector<std::uint8_t> bytes = savedProfile(OwnedProfile(cmsCreate_sRGBProfile()).get());
    return bytes;
}

ColorConversion ColorConversion::none(RowFormat format)
{
    return ColorConversion(format);
}

// The pictures of a folder have few profiles among them, and to look into one takes longer than to convert a
// thumbnail: those met last are kept, but for the profiles that are large for one.
ColorConversion ColorConversion::toSrgb(RowFormat format, ProfileBytes profile)
{
    struct Known
    {
        std::vector<std::uint8_t> profile;
        ColorConversion conversion;
    };
    constexpr std::size_t most = 4;
    constexpr std::size_t large = std::size_t{2} << 20U; // bytes; those of inks take half a megabyte to two
    if (profile.size() > large) return made(format, profile);
    thread_local std::vector<Known> known; // the latest first
    const auto isThis = [&](const Known& other) {
        return other.conversion.m_format == format && std::ranges::equal(other.profile, profile);
    };
    const auto found = std::ranges::find_if(known, isThis);
    if (found != known.end()) {
        std::rotate(known.begin(), found, found + 1);
    } else {
        if (known.size() == most) known.pop_back();
        known.insert(known.begin(), {{profile.begin(), profile.end()}, made(format, profile)});
    }
    return known.front().conversion;
}

ColorConversion ColorConversion::made(RowFormat format, ProfileBytes profile)
{
    ColorConversion conversion(format);
    const OwnedProfile source = sourceProfile(profile, format.model);
    if (!source || isSrgb(source.get(), format.model)) return conversion;
    conversion.m_transform =
        srgbTransform(source.get(), pixelTypeOf(format), format.hasAlpha ? TYPE_RGBA_8 : TYPE_RGB_8);
    conversion.m_isPossible = conversion.m_transform != nullptr;
    return conversion;
}

void ColorConversion::run(const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) const
{
    if (!m_transform) return widen(from, to, pixels);
    while (pixels > 0) {
        const std::size_t count = std::min<std::size_t>(pixels, 1U << 20U);
        cmsDoTransform(m_transform.get(), from, to, static_cast<cmsUInt32Number>(count));
        from += count * static_cast<std::size_t>(m_format.bands());
        to += count * static_cast<std::size_t>(m_format.drawnBands());
        pixels -= count;
    }
}

void ColorConversion::widen(const std::uint8_t* from, std::uint8_t* to, std::size_t pixels) const
{
    const auto bands = static_cast<std::size_t>(m_format.bands());
    if (m_format.model == ColorModel::rgb) {
        std::memcpy(to, from, pixels * bands);
        return;
    }
    const bool isInk = m_format.model == ColorModel::cmyk;
    for (std::size_t i = 0; i < pixels; ++i, from += bands) {
        // Without any profile of inks at hand: the plain complement.
        for (std::size_t c = 0; c < 3; ++c)
            *to++ = isInk ? static_cast<std::uint8_t>((255 - from[c]) * (255 - from[3]) / 255) : from[0];
        if (m_format.hasAlpha) *to++ = from[bands - 1];
    }
}

} // namespace lumora
