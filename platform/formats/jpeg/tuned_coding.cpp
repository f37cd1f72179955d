// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/tuned_coding.h"

namespace lumora {

constinit const TunedCoding halvedChromaCoding{
    .brightness = {{-0.5F, -0.24F, -0.24F, -0.1F, -0.07F, 0.15F, 0.3F, 0.69F, 0.84F},
                   {0.5F, 0.6F, 0.62F, 0.6F, 0.63F, 0.65F, 0.65F},
                   {0.0F, 0.05F, 0.06F, 0.05F, 0.06F, 0.07F, 0.07F}},
    .blueDifference = {{0.6F, 0.78F, 0.78F, 0.554F, 0.604F, 1.08F, 1.28F, 1.324F, 1.524F},
                       {0.5F, 0.55F, 0.57F, 0.55F, 0.58F, 0.65F, 0.65F},
                       {0.0F, 0.02F, 0.03F, 0.05F, 0.06F, 0.04F, 0.04F}},
    .redDifference = {{-0.02F, 0.18F, 0.18F, 0.074F, 0.124F, 0.48F, 0.68F, 0.88F, 1.08F},
                      {0.5F, 0.55F, 0.57F, 0.55F, 0.58F, 0.65F, 0.65F},
                      {0.0F, 0.02F, 0.03F, 0.05F, 0.06F, 0.04F, 0.04F}},
    .roundUpFrom = 0.590F,
    .roundUpRise = 0.030F,
    .scales = {250.0F, 90.0F, 48.0F, 34.0F, 26.0F, 21.0F, 17.5F, 13.5F, 9.5F, 5.2F, 4.5F, 2.5F, 1.0F}};

constinit const TunedCoding fullChromaCoding{
    .brightness = {{-0.5F, -0.24F, -0.24F, -0.1F, -0.07F, 0.15F, 0.3F, 0.69F, 0.84F},
                   {0.5F, 0.6F, 0.62F, 0.6F, 0.63F, 0.65F, 0.65F},
                   {0.0F, 0.05F, 0.06F, 0.05F, 0.06F, 0.07F, 0.07F}},
    .blueDifference = {{0.9F, 1.08F, 1.08F, 0.854F, 0.904F, 1.38F, 1.58F, 1.624F, 1.824F},
                       {0.5F, 0.55F, 0.57F, 0.55F, 0.58F, 0.65F, 0.65F},
                       {0.0F, 0.02F, 0.03F, 0.05F, 0.06F, 0.04F, 0.04F}},
    .redDifference = {{0.28F, 0.48F, 0.48F, 0.374F, 0.424F, 0.78F, 0.98F, 1.18F, 1.38F},
                      {0.5F, 0.55F, 0.57F, 0.55F, 0.58F, 0.65F, 0.65F},
                      {0.0F, 0.02F, 0.03F, 0.05F, 0.06F, 0.04F, 0.04F}},
    .roundUpFrom = 0.590F,
    .roundUpRise = 0.030F,
    .scales = {250.0F, 90.0F, 48.0F, 34.0F, 26.0F, 21.0F, 17.5F, 13.5F, 9.5F, 5.2F, 4.5F, 2.5F, 1.0F}};

} // namespace lumora
