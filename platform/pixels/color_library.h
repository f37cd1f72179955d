// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Profiles and transforms of Little CMS, and the way from any profile to sRGB. Any thread.
#pragma once

#include "pixels/profile_bytes.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace lumora {

struct ProfileClose
{
    void operator()(void* profile) const;
};
using OwnedProfile = std::unique_ptr<void, ProfileClose>;

struct TransformDelete
{
    void operator()(void* transform) const;
};
using OwnedTransform = std::unique_ptr<void, TransformDelete>;

// What these bytes say of components of this model: null when they do not describe it, for inks the generic
// profile of printing.
OwnedProfile sourceProfile(ProfileBytes bytes, ColorModel model);

// Most profiles in the wild describe sRGB itself in one of many wordings, so the colours are asked, not the
// name. Of gray and rgb; inks never are.
bool isSrgb(void* profile, ColorModel model);

// Between components as the library numbers their forms; to those of sRGB. Alpha is carried over where both
// have it. Null where the profile is unfit.
OwnedTransform srgbTransform(void* source, std::uint32_t from, std::uint32_t to);

// The same bytes on every day: the library puts the time of its making into a profile, and the same picture
// would give other files at other times.
std::vector<std::uint8_t> savedProfile(void* profile);

} // namespace lumora
