// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/color_conversion.h"

#include <lcms2.h>
#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <vector>

namespace lumora {
namespace {

struct ProfileClose
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, ProfileClose>;

Profile openProfile(ProfileBytes bytes)
{
    if (bytes.empty() || bytes.size() > std::numeric_limits<cmsUInt32Number>::max()) return nullptr;
    return Profile(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
}

// The generic profile of printing inks that the image library carries, for pictures in CMYK that bring none.
ProfileBytes genericCmykProfile()
{
    static VipsBlob* const blob = [] {
        ensureVipsReady();
        VipsBlob* loaded = nullptr;
        if (vips_profile_load("cmyk", &loaded, nullptr) != 0) takeVipsError();
        return loaded;
    }();
    if (!blob) return {};
    std::size_t size = 0;
    const void* data = vips_blob_get(blob, &size);
    return {static_cast<const std::uint8_t*>(data), size};
}

cmsColorSpaceSignature signatureOf(ColorModel model)
{
    switch (model) {
    case ColorModel::gray:
        return cmsSigGrayData;
    case ColorModel::rgb:
        return cmsSigRgbData;
    case ColorModel::cmyk:
        break;
    }
    return cmsSigCmykData;
}

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

cmsHTRANSFORM createTransform(RowFormat format, cmsHPROFILE source)
{
    const Profile srgb(cmsCreate_sRGBProfile());
    const cmsUInt32Number flags = cmsFLAGS_BLACKPOINTCOMPENSATION |
                                  (format.hasAlpha ? static_cast<cmsUInt32Number>(cmsFLAGS_COPY_ALPHA) : 0U);
    return cmsCreateTransform(source, pixelTypeOf(format), srgb.get(), TYPE_RGBA_8,
                              INTENT_RELATIVE_COLORIMETRIC, flags);
}

// Photographs are of this kind: one wide load and store a pixel, but for the last, behind which nothing may
// be read.
void widenOpaque(const std::uint8_t* rgb, std::uint8_t* rgba, std::size_t pixels)
{
    constexpr std::array<std::uint8_t, 4> opaqueBytes{0, 0, 0, 255};
    const auto opaque = std::bit_cast<std::uint32_t>(opaqueBytes);
    for (; pixels > 1; --pixels, rgb += 3, rgba += 4) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, rgb, 4);
        pixel |= opaque;
        std::memcpy(rgba, &pixel, 4);
    }
    if (pixels == 1) {
        std::memcpy(rgba, rgb, 3);
        rgba[3] = 255;
    }
}

// Most profiles in the wild describe sRGB itself in one of many wordings, so the colours are asked, not the
// name.
bool isSrgb(cmsHPROFILE profile)
{
    constexpr int levels = 6;
    const cmsHTRANSFORM transform = createTransform({ColorModel::rgb, false}, profile);
    if (!transform) return false;
    bool same = true;
    for (int i = 0; i < levels * levels * levels && same; ++i) {
        const auto level = [](int step) {
            return static_cast<std::uint8_t>(step % levels * 255 / (levels - 1));
        };
        const std::array<std::uint8_t, 3> in{level(i), level(i / levels), level(i / levels / levels)};
        std::array<std::uint8_t, 4> out{};
        cmsDoTransform(transform, in.data(), out.data(), 1);
        for (std::size_t c = 0; c < 3; ++c)
            same = same && std::abs(in.at(c) - out.at(c)) <= 1;
    }
    cmsDeleteTransform(transform);
    return same;
}

// The library puts the time of its making into a profile: the same picture would give other files at other
// times.
void setDate(std::vector<std::uint8_t>& profile)
{
    constexpr std::ptrdiff_t datePosition = 24; // in the header; six numbers of two bytes
    constexpr std::array<std::uint8_t, 12> newYear2000{0x07, 0xD0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0};
    std::ranges::copy(newYear2000, profile.begin() + datePosition);
}

std::vector<std::uint8_t> makeSrgbProfile()
{
    const Profile profile(cmsCreate_sRGBProfile());
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile.get(), nullptr, &size);
    std::vector<std::uint8_t> bytes(size);
    cmsSaveProfileToMem(profile.get(), bytes.data(), &size);
    setDate(bytes);
    return bytes;
}

} // namespace

ProfileBytes srgbProfile()
{
    static const std::vector<std::uint8_t> bytes = makeSrgbProfile();
    return bytes;
}

bool describes(ProfileBytes profile, ColorModel model)
{
    const Profile opened = openProfile(profile);
    return opened && cmsGetColorSpace(opened.get()) == signatureOf(model);
}

void ColorConversion::TransformDelete::operator()(void* transform) const
{
    cmsDeleteTransform(transform);
}

ColorConversion::ColorConversion(RowFormat format, Transform transform)
    : m_format(format), m_transform(std::move(transform))
{
}

ColorConversion ColorConversion::none(RowFormat format)
{
    return {format, nullptr};
}

ColorConversion ColorConversion::toSrgb(RowFormat format, ProfileBytes profile)
{
    if (!describes(profile, format.model)) {
        if (format.model != ColorModel::cmyk) return none(format);
        profile = genericCmykProfile();
    }
    const Profile source = openProfile(profile);
    if (!source || (format.model == ColorModel::rgb && isSrgb(source.get()))) return none(format);
    ColorConversion conversion(format, Transform(createTransform(format, source.get())));
    conversion.m_isPossible = conversion.m_transform != nullptr;
    return conversion;
}

void ColorConversion::run(const std::uint8_t* from, std::uint8_t* rgba, std::size_t pixels) const
{
    if (!m_transform) return widen(from, rgba, pixels);
    if (!m_format.hasAlpha) std::fill_n(rgba, pixels * 4, std::uint8_t{255});
    while (pixels > 0) {
        const std::size_t count = std::min<std::size_t>(pixels, 1U << 20U);
        cmsDoTransform(m_transform.get(), from, rgba, static_cast<cmsUInt32Number>(count));
        from += count * static_cast<std::size_t>(m_format.bands());
        rgba += count * 4;
        pixels -= count;
    }
}

void ColorConversion::widen(const std::uint8_t* from, std::uint8_t* rgba, std::size_t pixels) const
{
    const auto bands = static_cast<std::size_t>(m_format.bands());
    const bool isGray = m_format.model == ColorModel::gray;
    const bool isInk = m_format.model == ColorModel::cmyk;
    if (m_format.model == ColorModel::rgb && !m_format.hasAlpha) return widenOpaque(from, rgba, pixels);
    for (std::size_t i = 0; i < pixels; ++i, from += bands, rgba += 4) {
        // Without any profile of inks at hand: the plain complement.
        for (std::size_t c = 0; c < 3; ++c) {
            rgba[c] = isInk ? static_cast<std::uint8_t>((255 - from[c]) * (255 - from[3]) / 255)
                            : from[isGray ? 0 : c];
        }
        rgba[3] = m_format.hasAlpha ? from[bands - 1] : std::uint8_t{255};
    }
}

} // namespace lumora
