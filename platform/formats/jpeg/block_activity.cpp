// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_activity.h"

#include "pixels/vector_clones.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumora {
namespace {

// Blocks are looked at so many at once, which is what lets the compiler compute their columns side by side.
constexpr int groupSize = 16;
using Columns = std::array<float, std::size_t{8} * groupSize>;

float activityOf(const float* inverse, const float* brightness)
{
    constexpr float usual = 3;
    constexpr float perBrightness = 0.28F; // dark areas hide less than light ones
    float inverseSum = 0;
    float brightnessSum = 0;
    for (int x = 0; x < 8; ++x) {
        inverseSum += inverse[x];
        brightnessSum += brightness[x];
    }
    const float activity =
        std::log2(64 / (inverseSum * usual)) + perBrightness * brightnessSum * (1.0F / (64 * 128));
    return std::clamp(activity, leastActivity, mostActivity);
}

} // namespace

LUMORA_VECTOR_CLONES void blockActivities(const BlockSurroundings& rows, int blocks, float* activities)
{
    constexpr float faint = 3.5F; // contrast that hides hardly more than none
    for (int first = 0; first < blocks; first += groupSize) {
        const int count = std::min(groupSize, blocks - first);
        Columns inverse{};
        Columns brightness{};
        for (std::size_t y = 1; y <= 8; ++y) {
            const float* const above = rows[y - 1] + std::ptrdiff_t{8} * first;
            const float* const row = rows[y] + std::ptrdiff_t{8} * first;
            const float* const below = rows[y + 1] + std::ptrdiff_t{8} * first;
            for (int x = 0; x < 8 * count; ++x) {
                const auto column = static_cast<std::size_t>(x);
                const float around = above[x] + below[x] + row[x - 1] + row[x + 1];
                inverse[column] += 1 / (std::abs(2 * row[x] - 0.5F * around) + faint);
                brightness[column] += row[x];
            }
        }
        for (int i = 0; i < count; ++i)
            activities[first + i] =
                activityOf(inverse.data() + std::ptrdiff_t{8} * i, brightness.data() + std::ptrdiff_t{8} * i);
    }
}

} // namespace lumora
