// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/chroma_halving.h"

#include "jpeg/component_rows.h"

#include <algorithm>

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
    return std::clamp((value + 128) * (1.0F / 255), 0.0F, 1.0F);
}

struct Light
{
    float amount;
    float slope; // with brightness
};

// The shares of the primaries of sRGB in light.
Light lightOf(float luma, float blueDifference, float redDifference)
{
    using Shares = BrightnessShares;
    constexpr float greenOfBlue = Shares::blue * Shares::blueRange / Shares::green;
    constexpr float greenOfRed = Shares::red * Shares::redRange / Shares::green;
    const float red = shownComponent(luma + Shares::redRange * redDifference);
    const float green = shownComponent(luma - greenOfBlue * blueDifference - greenOfRed * redDifference);
    const float blue = shownComponent(luma + Shares::blueRange * blueDifference);
    return {0.2126F * lightOf(red) + 0.7152F * lightOf(green) + 0.0722F * lightOf(blue),
            0.2126F * lightSlope(red) + 0.7152F * lightSlope(green) + 0.0722F * lightSlope(blue)};
}

} // namespace

void halveRows(const float* upper, const float* lower, int halfWidth, float* half)
{
    for (int x = 0; x < halfWidth; ++x)
        half[x] = (upper[2 * x] + upper[2 * x + 1] + lower[2 * x] + lower[2 * x + 1]) * 0.25F;
}

// Lines drawn between samples and averaged again weigh 1, 6, 1 eighths in each direction.
void sharpenRow(const float* above, const float* row, const float* below, int width, float* sharp)
{
    const auto column = [&](int x) { return (above[x] + below[x]) * 0.125F + row[x] * 0.75F; };
    for (int x = 0; x < width; ++x) {
        const float seen = (column(x - 1) + column(x + 1)) * 0.125F + column(x) * 0.75F;
        sharp[x] = 2 * row[x] - seen;
    }
}

void doubleRow(const float* near, const float* far, int halfWidth, float* full)
{
    const auto column = [&](int x) { return near[x] * 0.75F + far[x] * 0.25F; };
    for (int x = 0; x < halfWidth; ++x) {
        full[2 * x] = column(x) * 0.75F + column(x - 1) * 0.25F;
        full[2 * x + 1] = column(x) * 0.75F + column(x + 1) * 0.25F;
    }
}

// One step of Newton's method, bounded: where a component is at its end, light does not follow brightness.
void keepLight(const ColorRow& own, const ColorRow& shown, int width, float* luma)
{
    constexpr float most = 16;
    constexpr float least = 0.02F; // of the slope
    for (int x = 0; x < width; ++x) {
        const Light wanted = lightOf(luma[x], own.blue[x], own.red[x]);
        const Light seen = lightOf(luma[x], shown.blue[x], shown.red[x]);
        const float change = 255 * (wanted.amount - seen.amount) / std::max(seen.slope, least);
        luma[x] += std::clamp(change, -most, most);
    }
}

} // namespace lumora
