// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_activity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <random>

namespace lumora {
namespace {

float activityOf(const std::function<float(int x, int y)>& brightness)
{
    std::array<std::array<float, 10>, 10> samples{};
    BlockSurroundings rows{};
    for (std::size_t y = 0; y < 10; ++y) {
        for (std::size_t x = 0; x < 10; ++x)
            samples.at(y).at(x) = brightness(static_cast<int>(x), static_cast<int>(y));
        rows.at(y) = samples.at(y).data() + 1;
    }
    float activity = 0;
    blockActivities(rows, 1, &activity);
    return activity;
}

TEST(BlockActivity, IsLeastWhereThereIsNothing)
{
    const float flat = activityOf([](int, int) { return 0.0F; });
    EXPECT_NEAR(activityOf([](int x, int y) { return static_cast<float>(2 * x + 3 * y) - 22.5F; }), flat,
                0.01)
        << "a slope hides nothing";
    EXPECT_GE(flat, leastActivity);
}

TEST(BlockActivity, RisesWithContrastEverywhere)
{
    std::mt19937 random(3);
    const auto grain = [&](int strength) {
        return activityOf(
            [&](int, int) { return static_cast<float>(static_cast<int>(random() % 100) * strength) / 100; });
    };
    const float weak = grain(8);
    EXPECT_GT(weak, activityOf([](int, int) { return 0.0F; }) + 0.2F);
    EXPECT_GT(grain(60), weak + 1);
    EXPECT_LE(grain(10000), mostActivity);
}

// The flat side of an edge shows every error.
TEST(BlockActivity, IsHardlyRaisedByAnEdge)
{
    const float flat = activityOf([](int, int) { return 0.0F; });
    const float edge = activityOf([](int x, int) { return x < 5 ? -80.0F : 80.0F; });
    EXPECT_LT(edge - flat, 0.6F);
}

TEST(BlockActivity, IsTheSameForABlockAloneAsAmongOthers)
{
    constexpr int blocks = 37;
    std::mt19937 random(5);
    std::array<std::array<float, 8 * blocks + 2>, 10> samples{};
    BlockSurroundings rows{};
    for (std::size_t y = 0; y < samples.size(); ++y) {
        std::ranges::generate(samples.at(y), [&] { return static_cast<float>(random() % 256) - 128; });
        rows.at(y) = samples.at(y).data() + 1;
    }
    std::array<float, blocks> together{};
    blockActivities(rows, blocks, together.data());
    for (int i = 0; i < blocks; ++i) {
        BlockSurroundings own = rows;
        for (const float*& row : own)
            row += std::ptrdiff_t{8} * i;
        float alone = 0;
        blockActivities(own, 1, &alone);
        EXPECT_EQ(alone, together.at(static_cast<std::size_t>(i))) << i;
    }
}

} // namespace
} // namespace lumora
