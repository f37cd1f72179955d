// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_quantizer.h"

#include "jpeg/zigzag.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

namespace lumora {
namespace {

ComponentCoding someCoding()
{
    ComponentCoding coding{};
    coding.steps.fill(10);
    coding.zeroBelow.fill(0.6F);
    coding.zeroBelowRise.fill(0.1F);
    coding.mostZeroBelow = 0.95F;
    coding.roundUpFrom = 0.6F;
    return coding;
}

// Of a block with one frequency, so many steps large.
int quantized(float steps, float activity, std::size_t u = 1, std::size_t v = 2)
{
    DctBlock frequencies{};
    frequencies.at(u * 8 + v) = steps * 10 * dctScale(static_cast<int>(u), static_cast<int>(v));
    std::array<std::int16_t, 64> coefficients{};
    BlockQuantizer(someCoding()).quantize(frequencies, activity, coefficients.data());
    const auto place = std::ranges::find(zigzag, v * 8 + u);
    return coefficients.at(static_cast<std::size_t>(place - zigzag.begin()));
}

TEST(BlockQuantizer, DropsWhatIsSmallAgainstItsStep)
{
    EXPECT_EQ(quantized(0.55F, 0), 0);
    EXPECT_EQ(quantized(0.65F, 0), 1);
    EXPECT_EQ(quantized(-0.55F, 0), 0);
    EXPECT_EQ(quantized(-0.65F, 0), -1);
}

TEST(BlockQuantizer, DropsMoreWhereTheBlockHidesMore)
{
    EXPECT_EQ(quantized(0.75F, 0), 1);
    EXPECT_EQ(quantized(0.75F, 2), 0);
    EXPECT_EQ(quantized(0.55F, -1), 1);
    EXPECT_EQ(quantized(0.97F, 20), 1) << "a whole step is never dropped";
}

TEST(BlockQuantizer, RoundsUpFromItsOwnFraction)
{
    EXPECT_EQ(quantized(3.55F, 0), 3);
    EXPECT_EQ(quantized(3.65F, 0), 4);
    EXPECT_EQ(quantized(-3.65F, 0), -4);
}

TEST(BlockQuantizer, RoundsTheMeanToTheNearest)
{
    EXPECT_EQ(quantized(0.52F, 3, 0, 0), 1);
    EXPECT_EQ(quantized(-7.52F, 3, 0, 0), -8);
    EXPECT_EQ(quantized(7.48F, 3, 0, 0), 7);
}

} // namespace
} // namespace lumora
