// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/color_profile.h"

#include <glib.h>
#include <lcms2.h>

#include <array>
#include <memory>
#include <vector>

namespace lumora {

std::string profileDescription(std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) return {};
    const std::unique_ptr<void, cmsBool (*)(cmsHPROFILE)> profile(
        cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())), cmsCloseProfile);
    if (!profile) return {};
    const auto text = [&](wchar_t* buffer, cmsUInt32Number size) {
        return cmsGetProfileInfo(profile.get(), cmsInfoDescription, "en", "US", buffer, size);
    };
    std::vector<wchar_t> wide(text(nullptr, 0) / sizeof(wchar_t) + 1);
    text(wide.data(), static_cast<cmsUInt32Number>(wide.size() * sizeof(wchar_t)));

    std::string description;
    for (const wchar_t* letter = wide.data(); *letter != 0; ++letter) {
        std::array<char, 6> utf8{};
        const auto code = static_cast<gunichar>(*letter);
        if (g_unichar_validate(code))
            description.append(utf8.data(), static_cast<std::size_t>(g_unichar_to_utf8(code, utf8.data())));
    }
    return description;
}

} // namespace lumora
