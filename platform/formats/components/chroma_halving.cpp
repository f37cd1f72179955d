// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "components/chroma_halving.h"

#include "components/component_rows.h"
#include "pixels/vector_clones.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace lumora {
namespace {

// Light of an sRGB component from 0 to 1 as a cubic polynomial, within a hundredth of white.
struct LightCurve
{
    static constexpr float linear = 0.012522878F;
    static constexpr float square = 0.682171111F;
    static constexpr float cube = 0.305306011F;
};

float lightOf(float value)
{
    return value * (value * (value * LightCurve::cube + LightCurve::square) + LightCurve::linear);
}

float lightSlope(float value)
{
    return value * (value * (3 * LightCurve::cube) + 2 * LightCurve::square) + LightCurve::linear;
}

float shownComponent(float value)
{
    return std::min(std::max((value + 128) * (1.0F / 255), 0.0F), 1.0F);
}

// Pixels are looked at so many at once, which is what lets the compiler compute them side by side.
constexpr int groupSize = 16;
using Group = std::array<float, groupSize>;

// Light and how it changes with brightness, by the shares of the primaries of sRGB in it.
struct GroupLight
{
    Group amount;
    Group slope;
};

GroupLight lightOf(const float* luma, const float* blueDifference, const float* redDifference)
{
    using Shares = BrightnessShares;
    constexpr float greenOfBlue = Shares::blue * Shares::blueRange / Shares::green;
    constexpr float greenOfRed = Shares::red * Shares::redRange / Shares::green;
    GroupLight light;
    for (std::size_t i = 0; i < groupSize; ++i) {
        const float red = shownComponent(luma[i] + Shares::redRange * redDifference[i]);
        const float green =
            shownComponent(luma[i] - greenOfBlue * blueDifference[i] - greenOfRed * redDifference[i]);
        const float blue = shownComponent(luma[i] + Shares::blueRange * blueDifference[i]);
        light.amount[i] = 0.2126F * lightOf(red) + 0.7152F * lightOf(green) + 0.0722F * lightOf(blue);
        light.slope[i] = 0.2126F * lightSlope(red) + 0.7152F * lightSlope(green) + 0.0722F * lightSlope(blue);
    }
    return light;
}

// Most of most pictures has none, and then there is nothing to make up for.
bool hasVisibleChange(const ColorRow& own, const ColorRow& shown)
{
    constexpr float visible = 1.5F;
    int changes = 0;
    for (std::size_t i = 0; i < groupSize; ++i) {
        const float change = std::abs(own.blue[i] - shown.blue[i]) + std::abs(own.red[i] - shown.red[i]);
        changes += change > visible ? 1 : 0;
    }
    return changes > 0;
}

// One step of Newton's method, bounded: where a component is at its end, light does not follow brightness.
void keepGroupLight(const ColorRow& own, const ColorRow& shown, float* luma)
{
    constexpr float most = 16;
    constexpr float least = 0.02F; // of the slope
    const GroupLight wanted = lightOf(luma, own.blue, own.red);
    const GroupLight seen = lightOf(luma, shown.blue, shown.red);
    for (std::size_t i = 0; i < groupSize; ++i) {
        const float slope = std::max(seen.slope[i], least);
        const float change = 255 * (wanted.amount[i] - seen.amount[i]) / slope;
        luma[i] += std::min(std::max(change, -most), most);
    }
}

} // namespace

LUMORA_VECTOR_CLONES void halveRows(const float* upper, const float* lower, int halfWidth, float* half)
{
    for (int x = 0; x < halfWidth; ++x) {
        const float above = upper[0] + upper[1];
        half[x] = (above + lower[0] + lower[1]) * 0.25F;
        upper += 2;
        lower += 2;
    }
}

// Lines drawn between samples and averaged again weigh 1, 6, 1 eighths in each direction.
LUMORA_VECTOR_CLONES void sharpenRow(const float* above, const float* row, const float* below, int width,
                                     float* sharp)
{
    const auto column = [&](int x) { return (above[x] + below[x]) * 0.125F + row[x] * 0.75F; };
    for (int x = 0; x < width; ++x) {
        const float seen = (column(x - 1) + column(x + 1)) * 0.125F + column(x) * 0.75F;
        sharp[x] = 2 * row[x] - seen;
    }
}

LUMORA_VECTOR_CLONES void doubleRow(const float* near, const float* far, int halfWidth, float* full)
{
    const auto column = [&](int x) { return near[x] * 0.75F + far[x] * 0.25F; };
    for (int x = 0; x < halfWidth; ++x) {
        full[0] = column(x) * 0.75F + column(x - 1) * 0.25F;
        full[1] = column(x) * 0.75F + column(x + 1) * 0.25F;
        full += 2;
    }
}

LUMORA_VECTOR_CLONES void keepLight(const ColorRow& own, const ColorRow& shown, int width, float* luma)
{
    for (int x = 0; x + groupSize <= width; x += groupSize) {
        const ColorRow ownGroup{own.blue + x, own.red + x};
        const ColorRow shownGroup{shown.blue + x, shown.red + x};
        if (hasVisibleChange(ownGroup, shownGroup)) keepGroupLight(ownGroup, shownGroup, luma + x);
    }
}

} // namespace lumora
