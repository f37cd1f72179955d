// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/component_rows.h"

namespace lumora {

void grayToComponent(const std::uint8_t* gray, int width, float* luma)
{
    for (int x = 0; x < width; ++x)
        luma[x] = static_cast<float>(gray[x]) - 128;
}

void rgbToComponents(const std::uint8_t* rgb, int width, float* luma, float* blueDifference,
                     float* redDifference)
{
    using Shares = BrightnessShares;
    for (int x = 0; x < width; ++x) {
        const auto red = static_cast<float>(rgb[3 * x]);
        const auto green = static_cast<float>(rgb[3 * x + 1]);
        const auto blue = static_cast<float>(rgb[3 * x + 2]);
        const float brightness = Shares::red * red + Shares::green * green + Shares::blue * blue;
        luma[x] = brightness - 128;
        blueDifference[x] = (blue - brightness) * (1 / Shares::blueRange);
        redDifference[x] = (red - brightness) * (1 / Shares::redRange);
    }
}

} // namespace lumora
