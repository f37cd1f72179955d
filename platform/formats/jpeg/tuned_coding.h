// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers that bench/jpeg-tuning.py found: they make the files of photographs smallest at the same
// butteraugli and SSIMULACRA scores.
#pragma once

#include <array>
#include <span>

namespace lumora {

// A frequency is the length of the vector of its horizontal and its vertical index.
inline constexpr std::array stepFrequencies{0.0F, 1.0F, 1.5F, 2.3F, 3.2F, 4.5F, 6.0F, 8.0F, 9.9F};
inline constexpr std::array zeroFrequencies{0.0F, 1.0F, 2.0F, 3.5F, 5.5F, 8.0F, 9.9F};
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
    float mostZeroBelow;
    float roundUpFrom;
    float roundUpRise;
    // So that a picture scores as the library's of the same quality: qualities in rising order, and the scale
    // of the steps at each.
    std::span<const float> qualities;
    std::span<const float> scales;
};

// For qualities below 90 and from there to 99.
extern const TunedCoding halvedChromaCoding;
extern const TunedCoding fullChromaCoding;

} // namespace lumora
