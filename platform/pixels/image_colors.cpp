// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/image_colors.h"

#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"

#include <vips/vips.h>

#include <algorithm>

namespace lumora {

bool isSrgb(VipsImage* image)
{
    const auto model = colorModelOf(image);
    return model && *model != ColorModel::cmyk &&
           ColorConversion::toSrgb({*model, false}, attachedProfile(image)).isIdentity();
}

bool isSrgb(const Image& image)
{
    return isSrgb(image.pixels());
}

bool haveSameProfile(const Image& a, const Image& b)
{
    return std::ranges::equal(attachedProfile(a.pixels()), attachedProfile(b.pixels()));
}

} // namespace lumora
