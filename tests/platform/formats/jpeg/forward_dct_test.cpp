// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/forward_dct.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>

namespace lumora {
namespace {

double byDefinition(const std::array<float, 64>& samples, int u, int v)
{
    const auto wave = [](int k, int at) { return std::cos((2 * at + 1) * k * std::numbers::pi / 16); };
    double sum = 0;
    for (int i = 0; i < 64; ++i)
        sum += static_cast<double>(samples.at(static_cast<std::size_t>(i))) * wave(u, i % 8) * wave(v, i / 8);
    return sum / 4 * (u == 0 ? std::sqrt(0.5) : 1) * (v == 0 ? std::sqrt(0.5) : 1);
}

TEST(ForwardDct, GivesWhatTheDefinitionDoes)
{
    std::mt19937 random(1);
    for (int round = 0; round < 20; ++round) {
        std::array<float, 64> samples{};
        for (float& sample : samples)
            sample = static_cast<float>(random() % 256) - 128;
        std::array<const float*, 8> rows{};
        for (std::size_t y = 0; y < 8; ++y)
            rows[y] = &samples[8 * y];

        DctBlock frequencies;
        forwardDct(rows, frequencies);

        for (int u = 0; u < 8; ++u) {
            for (int v = 0; v < 8; ++v) {
                const std::size_t place = static_cast<std::size_t>(u) * 8 + static_cast<std::size_t>(v);
                EXPECT_NEAR(frequencies.at(place) / dctScale(u, v), byDefinition(samples, u, v), 1e-3)
                    << u << ", " << v;
            }
        }
    }
}

} // namespace
} // namespace lumora
