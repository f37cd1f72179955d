// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of a picture as brightness and colour differences (ITU-T T.871). Any thread.
#pragma once

#include <cstdint>

namespace lumora {

// The shares of the primaries in brightness, as the format's colour equations have them.
struct BrightnessShares
{
    static constexpr float red = 0.299F;
    static constexpr float green = 0.587F;
    static constexpr float blue = 0.114F;
    // What takes a colour difference to half of the range, and back.
    static constexpr float blueRange = 2 * (1 - blue);
    static constexpr float redRange = 2 * (1 - red);
};

// Samples are about zero: from -128 to 127.
void grayToComponent(const std::uint8_t* gray, int width, float* luma);
void rgbToComponents(const std::uint8_t* rgb, int width, float* luma, float* blueDifference,
                     float* redDifference);

// As stored in 8 bits: rounded, from 0 to 255.
void componentToBytes(const float* component, int width, std::uint8_t* bytes);

} // namespace lumora
