// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_activity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumora {

float blockActivity(const BlockSurroundings& rows)
{
    constexpr float faint = 3.5F; // contrast that hides hardly more than none
    constexpr float usual = 3;
    constexpr float perBrightness = 0.28F; // dark areas hide less than light ones
    std::array<float, 8> inverse{};
    std::array<float, 8> brightness{};
    for (std::size_t y = 1; y <= 8; ++y) {
        for (int x = 0; x < 8; ++x) {
            const float* const row = rows[y] + x;
            const float around = rows[y - 1][x] + rows[y + 1][x] + row[-1] + row[1];
            const auto lane = static_cast<std::size_t>(x);
            inverse[lane] += 1 / (std::abs(2 * row[0] - 0.5F * around) + faint);
            brightness[lane] += row[0];
        }
    }
    float inverseSum = 0;
    float brightnessSum = 0;
    for (std::size_t lane = 0; lane < 8; ++lane) {
        inverseSum += inverse[lane];
        brightnessSum += brightness[lane];
    }
    const float activity =
        std::log2(64 / (inverseSum * usual)) + perBrightness * brightnessSum * (1.0F / (64 * 128));
    return std::clamp(activity, leastActivity, mostActivity);
}

} // namespace lumora
