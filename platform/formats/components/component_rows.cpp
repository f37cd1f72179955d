// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "components/component_rows.h"

#include "pixels/vector_clones.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace lumora {
namespace {

void partedToComponents(const std::uint8_t* reds, const std::uint8_t* greens, const std::uint8_t* blues,
                        int width, float* luma, float* blueDifference, float* redDifference)
{
    using Shares = BrightnessShares;
    for (int x = 0; x < width; ++x) {
        const auto red = static_cast<float>(reds[x]);
        const auto green = static_cast<float>(greens[x]);
        const auto blue = static_cast<float>(blues[x]);
        const float brightness = Shares::red * red + Shares::green * green + Shares::blue * blue;
        luma[x] = brightness - 128;
        blueDifference[x] = (blue - brightness) * (1 / Shares::blueRange);
        redDifference[x] = (red - brightness) * (1 / Shares::redRange);
    }
}

} // namespace

void grayToComponent(const std::uint8_t* gray, int width, float* luma)
{
    for (int x = 0; x < width; ++x)
        luma[x] = static_cast<float>(gray[x]) - 128;
}

// The components of so many pixels are parted first, so that the compiler computes them side by side.
LUMORA_VECTOR_CLONES void rgbToComponents(const std::uint8_t* rgb, int width, float* luma,
                                          float* blueDifference, float* redDifference)
{
    constexpr int most = 64;
    for (int first = 0; first < width; first += most) {
        std::array<std::array<std::uint8_t, most>, 3> parted{};
        const int count = std::min(most, width - first);
        for (int i = 0; i < count; ++i) {
            const std::uint8_t* const pixel = rgb + static_cast<std::ptrdiff_t>(3) * (first + i);
            const auto at = static_cast<std::size_t>(i);
            parted[0][at] = pixel[0];
            parted[1][at] = pixel[1];
            parted[2][at] = pixel[2];
        }
        partedToComponents(parted[0].data(), parted[1].data(), parted[2].data(), count, luma + first,
                           blueDifference + first, redDifference + first);
    }
}

LUMORA_VECTOR_CLONES void componentToBytes(const float* component, int width, std::uint8_t* bytes)
{
    for (int x = 0; x < width; ++x)
        bytes[x] = static_cast<std::uint8_t>(std::min(std::max(component[x] + 128.5F, 0.0F), 255.0F));
}

} // namespace lumora
