// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "vips_density.h"

#include <vips/vips.h>

namespace lumora {

Resolution densityOf(VipsImage* image)
{
    constexpr double millimetresInInch = 25.4;
    const double x = vips_image_get_xres(image);
    const double y = vips_image_get_yres(image);
    // One dot a millimetre is what the library says of a picture that says nothing.
    if (x == 1.0 && y == 1.0) return {};
    return {x * millimetresInInch, y * millimetresInInch};
}

} // namespace lumora
