// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "color_library.h"

#include "pixels/vips_library.h"

#include <lcms2.h>
#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace lumora {
namespace {

OwnedProfile openProfile(ProfileBytes bytes)
{
    if (bytes.empty() || bytes.size() > std::numeric_limits<cmsUInt32Number>::max()) return nullptr;
    return OwnedProfile(cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
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

bool isOf(ColorModel model, cmsHPROFILE profile)
{
    return profile && cmsGetColorSpace(profile) == signatureOf(model);
}

// The greys, or a grid of colours.
std::vector<std::uint8_t> samplesOf(ColorModel model)
{
    constexpr int levels = 6;
    std::vector<std::uint8_t> samples;
    if (model == ColorModel::gray) {
        for (int i = 0; i < 256; ++i)
            samples.push_back(static_cast<std::uint8_t>(i));
        return samples;
    }
    for (int i = 0; i < levels * levels * levels; ++i) {
        for (const int step : {i, i / levels, i / levels / levels})
            samples.push_back(static_cast<std::uint8_t>(step % levels * 255 / (levels - 1)));
    }
    return samples;
}

} // namespace

void ProfileClose::operator()(void* profile) const
{
    cmsCloseProfile(profile);
}

void TransformDelete::operator()(void* transform) const
{
    cmsDeleteTransform(transform);
}

bool describes(ProfileBytes profile, ColorModel model)
{
    return isOf(model, openProfile(profile).get());
}

OwnedProfile sourceProfile(ProfileBytes bytes, ColorModel model)
{
    OwnedProfile profile = openProfile(bytes);
    if (isOf(model, profile.get())) return profile;
    return model == ColorModel::cmyk ? openProfile(genericCmykProfile()) : nullptr;
}

OwnedTransform srgbTransform(void* source, std::uint32_t from, std::uint32_t to)
{
    const OwnedProfile srgb(cmsCreate_sRGBProfile());
    const bool carriesAlpha = T_EXTRA(from) != 0 && T_EXTRA(to) != 0;
    cmsUInt32Number flags = cmsFLAGS_BLACKPOINTCOMPENSATION;
    if (carriesAlpha) flags |= static_cast<cmsUInt32Number>(cmsFLAGS_COPY_ALPHA);
    // Of the usual number of steps the darkest greys under a linear profile come out 7 of 255 too dark.
    if (T_COLORSPACE(from) == PT_GRAY) flags |= static_cast<cmsUInt32Number>(cmsFLAGS_GRIDPOINTS(255));
    // A table of 33 steps a component, which the library makes for deeper ones, misses by up to 8 of 255.
    const bool isDeep = T_BYTES(from) != 1;
    if (isDeep && (T_COLORSPACE(from) == PT_GRAY || T_COLORSPACE(from) == PT_RGB))
        flags |= static_cast<cmsUInt32Number>(cmsFLAGS_NOOPTIMIZE);
    return OwnedTransform(
        cmsCreateTransform(source, from, srgb.get(), to, INTENT_RELATIVE_COLORIMETRIC, flags));
}

bool isSrgb(void* profile, ColorModel model)
{
    if (model == ColorModel::cmyk) return false;
    const bool isGray = model == ColorModel::gray;
    const OwnedTransform transform = srgbTransform(profile, isGray ? TYPE_GRAY_8 : TYPE_RGB_8, TYPE_RGB_8);
    if (!transform) return false;
    const std::vector<std::uint8_t> in = samplesOf(model);
    const std::size_t bands = isGray ? 1 : 3;
    std::vector<std::uint8_t> out(in.size() / bands * 3);
    cmsDoTransform(transform.get(), in.data(), out.data(), static_cast<cmsUInt32Number>(in.size() / bands));
    for (std::size_t i = 0; i < out.size(); ++i) {
        if (std::abs(out[i] - in[isGray ? i / 3 : i]) > 1) return false;
    }
    return true;
}

std::vector<std::uint8_t> savedProfile(void* profile)
{
    constexpr std::ptrdiff_t datePosition = 24; // in the header; six numbers of two bytes
    constexpr std::array<std::uint8_t, 12> newYear2000{0x07, 0xD0, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0};
    cmsUInt32Number size = 0;
    if (!cmsSaveProfileToMem(profile, nullptr, &size)) return {};
    std::vector<std::uint8_t> bytes(size);
    if (!cmsSaveProfileToMem(profile, bytes.data(), &size)) return {};
    std::ranges::copy(newYear2000, bytes.begin() + datePosition);
    return bytes;
}

} // namespace lumora
