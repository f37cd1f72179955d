// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers that bench/jpeg-tuning.py found: they make the files of photographs smallest at the same
// butteraugli and SSIMULACRA scores.
#pragma once

#include <array>

namespace lumora {

// A frequency is the length of the vector of its horizontal and its vertical index.
inline constexpr std::array stepFrequencies{0.0F, 1.0F, 1.5F, 2.3F, 3.2F, 4.5F, 6.0F, 8.0F, 9.9F};
inline constexpr std::array zeroFrequencies{0.0F, 1.0F, 2.0F, 3.5F, 5.5F, 8.0F, 9.9F};
// Those that a scale was found for, so that a picture scores as the library's of that quality did.
inline constexpr std::array scaleQualities{1.0F,  10.0F, 20.0F, 30.0F, 40.0F, 50.0F, 60.0F,
                                           70.0F, 80.0F, 89.0F, 90.0F, 95.0F, 99.0F};

struct TunedComponent
{
    std::array<float, stepFrequencies.size()> steps; // natural logarithms, over the scale
    std::array<float, zeroFrequencies.size()> zeroBelow;
    std::array<float, zeroFrequencies.size()> zeroBelowRise;
};

struct TunedCoding
{
    TunedComponent brightness;
    TunedComponent blueDifference;
    TunedComponent redDifference;
    float roundUpFrom;
    float roundUpRise;
    std::array<float, scaleQualities.size()> scales;
};

extern const TunedCoding halvedChromaCoding;
extern const TunedCoding fullChromaCoding;

} // namespace lumora
