// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/color_profile.h"

#include "pixels/vips_library.h"
#include "system/utf8.h"

#include <glib.h>
#include <lcms2.h>
#include <vips/vips.h>

#include <memory>
#include <vector>

namespace lumora {
namespace {

using OpenedProfile = std::unique_ptr<void, cmsBool (*)(cmsHPROFILE)>;

OpenedProfile opened(std::span<const std::uint8_t> bytes)
{
    return {cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())), cmsCloseProfile};
}

} // namespace

std::span<const std::uint8_t> attachedProfile(VipsImage* image)
{
    const std::string_view profile = blobOf(image, VIPS_META_ICC_NAME);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): characters as bytes
    return {reinterpret_cast<const std::uint8_t*>(profile.data()), profile.size()};
}

std::string profileDescription(std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) return {};
    const OpenedProfile profile = opened(bytes);
    if (!profile) return {};
    const auto text = [&](wchar_t* buffer, cmsUInt32Number size) {
        return cmsGetProfileInfo(profile.get(), cmsInfoDescription, "en", "US", buffer, size);
    };
    std::vector<wchar_t> wide(text(nullptr, 0) / sizeof(wchar_t) + 1);
    text(wide.data(), static_cast<cmsUInt32Number>(wide.size() * sizeof(wchar_t)));

    std::string description;
    for (const wchar_t* letter = wide.data(); *letter != 0; ++letter) {
        const auto code = static_cast<char32_t>(*letter);
        if (g_unichar_validate(code)) appendUtf8(description, code);
    }
    return description;
}

bool countsLight(std::span<const std::uint8_t> bytes)
{
    constexpr double tolerance = 0.1;
    constexpr double nearLinear = 1.4;
    if (bytes.empty()) return false;
    const OpenedProfile profile = opened(bytes);
    const double gamma = profile ? cmsDetectRGBProfileGamma(profile.get(), tolerance) : -1;
    return gamma > 0 && gamma < nearLinear;
}

} // namespace lumora
