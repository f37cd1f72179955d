// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/quality_coding.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>

namespace lumora {
namespace {

constexpr JpegComponent components[] = {JpegComponent::brightness, JpegComponent::blueDifference,
                                        JpegComponent::redDifference};

int sumOfSteps(JpegComponent component, int quality)
{
    const auto coding = codingOf(component, quality, quality >= 90);
    return std::accumulate(coding.steps.begin(), coding.steps.end(), 0);
}

TEST(QualityCoding, IsFinerTheHigherTheQuality)
{
    for (const JpegComponent component : components) {
        int coarser = 64 * 256;
        for (const int quality : {1, 10, 30, 50, 70, 82, 89}) {
            const int sum = sumOfSteps(component, quality);
            EXPECT_LT(sum, coarser) << quality;
            coarser = sum;
        }
        coarser = 64 * 256;
        for (const int quality : {90, 92, 95, 98, 100}) {
            const int sum = sumOfSteps(component, quality);
            EXPECT_LT(sum, coarser) << quality;
            coarser = sum;
        }
    }
}

TEST(QualityCoding, HasStepsThatEveryDecoderReads)
{
    for (const JpegComponent component : components) {
        for (int quality = 1; quality <= 100; ++quality) {
            const auto coding = codingOf(component, quality, quality >= 90);
            EXPECT_TRUE(std::ranges::all_of(coding.steps, [](int step) { return step >= 1 && step <= 255; }));
        }
    }
}

TEST(QualityCoding, OnlyRoundsAtTheTop)
{
    const auto coding = codingOf(JpegComponent::redDifference, 100, true);
    EXPECT_TRUE(std::ranges::all_of(coding.steps, [](int step) { return step == 1; }));
    EXPECT_EQ(coding.zeroBelow.at(63), 0.5F);
    EXPECT_EQ(coding.zeroBelowRise.at(63), 0);
}

} // namespace
} // namespace lumora
