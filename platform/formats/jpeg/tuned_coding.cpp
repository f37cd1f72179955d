// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/tuned_coding.h"

namespace lumora {
namespace {

constexpr std::array halvedQualities{1.0F,  10.0F, 20.0F, 30.0F, 40.0F, 50.0F,
                                     60.0F, 70.0F, 75.0F, 80.0F, 85.0F, 89.0F};
constexpr std::array halvedScales{240.0F, 85.0F, 43.0F, 32.5F, 26.2F, 21.8F,
                                  18.5F,  15.3F, 13.2F, 10.8F, 8.8F,  6.95F};
constexpr std::array fullQualities{90.0F, 92.0F, 95.0F, 97.0F, 99.0F};
constexpr std::array fullScales{4.4F, 3.75F, 2.6F, 1.95F, 1.1F};

} // namespace

constinit const TunedCoding halvedChromaCoding{
    .brightness = {{-0.5F, -0.24F, -0.24F, -0.1F, -0.07F, -0.006F, 0.144F, 0.69F, 0.84F},
                   {0.5F, 0.535F, 0.555F, 0.6F, 0.63F, 0.585F, 0.585F},
                   {0.0F, 0.05F, 0.06F, 0.05F, 0.06F, 0.055F, 0.055F}},
    .blueDifference = {{0.1F, 0.624F, 0.624F, 0.554F, 0.604F, 0.924F, 1.124F, 1.324F, 1.524F},
                       {0.5F, 0.615F, 0.635F, 0.575F, 0.605F, 0.585F, 0.585F},
                       {0.0F, 0.02F, 0.03F, 0.011F, 0.021F, 0.04F, 0.04F}},
    .redDifference = {{-0.2F, 0.18F, 0.18F, 0.074F, 0.124F, 0.324F, 0.524F, 0.94F, 1.14F},
                      {0.5F, 0.615F, 0.635F, 0.575F, 0.605F, 0.585F, 0.585F},
                      {0.0F, 0.02F, 0.03F, 0.011F, 0.021F, 0.04F, 0.04F}},
    .mostZeroBelow = 0.950F,
    .roundUpFrom = 0.570F,
    .roundUpRise = 0.030F,
    .qualities = halvedQualities,
    .scales = halvedScales};

constinit const TunedCoding fullChromaCoding{
    .brightness = {{-0.5F, -0.12F, -0.12F, 0.02F, 0.05F, 0.27F, 0.42F, 0.69F, 0.84F},
                   {0.5F, 0.535F, 0.555F, 0.6F, 0.63F, 0.535F, 0.535F},
                   {0.0F, 0.035F, 0.045F, 0.08F, 0.09F, 0.124F, 0.124F}},
    .blueDifference = {{0.5F, 1.234F, 1.234F, 1.38F, 1.43F, 1.594F, 1.794F, 1.874F, 2.074F},
                       {0.5F, 0.6F, 0.62F, 0.625F, 0.655F, 0.635F, 0.635F},
                       {0.0F, 0.05F, 0.06F, 0.08F, 0.09F, 0.07F, 0.07F}},
    .redDifference = {{0.2F, 0.73F, 0.73F, 0.9F, 0.95F, 1.15F, 1.35F, 1.55F, 1.75F},
                      {0.5F, 0.6F, 0.62F, 0.625F, 0.655F, 0.635F, 0.635F},
                      {0.0F, 0.05F, 0.06F, 0.08F, 0.09F, 0.07F, 0.07F}},
    .mostZeroBelow = 0.720F,
    .roundUpFrom = 0.590F,
    .roundUpRise = 0.000F,
    .qualities = fullQualities,
    .scales = fullScales};

} // namespace lumora
