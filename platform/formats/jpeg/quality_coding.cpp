// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/quality_coding.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace lumora {
namespace {

// The value at `place` of the lines drawn through the points.
float between(std::span<const float> places, std::span<const float> values, float place)
{
    const auto next = std::ranges::upper_bound(places, place);
    if (next == places.begin()) return values.front();
    if (next == places.end()) return values.back();
    const auto i = static_cast<std::size_t>(next - places.begin());
    const float share = (place - places[i - 1]) / (places[i] - places[i - 1]);
    return values[i - 1] + (values[i] - values[i - 1]) * share;
}

std::uint16_t stepOf(float step)
{
    return static_cast<std::uint16_t>(std::clamp(std::lround(step), 1L, 255L));
}

const TunedComponent& tunedComponent(const TunedCoding& coding, JpegComponent component)
{
    if (component == JpegComponent::brightness) return coding.brightness;
    return component == JpegComponent::blueDifference ? coding.blueDifference : coding.redDifference;
}

// Nothing but rounding, by one.
ComponentCoding nearlyLossless()
{
    ComponentCoding coding{};
    coding.steps.fill(1);
    coding.zeroBelow.fill(0.5F);
    coding.mostZeroBelow = 0.5F;
    coding.roundUpFrom = 0.5F;
    return coding;
}

} // namespace

ComponentCoding scaledCoding(const TunedCoding& tuned, JpegComponent component, float scale)
{
    const TunedComponent& own = tunedComponent(tuned, component);
    ComponentCoding coding{};
    for (std::size_t i = 0; i < 64; ++i) {
        const std::size_t across = i % 8;
        const std::size_t down = i / 8;
        const float frequency = std::hypot(static_cast<float>(across), static_cast<float>(down));
        coding.steps[i] = stepOf(scale * std::exp(between(stepFrequencies, own.steps, frequency)));
        coding.zeroBelow[i] = between(zeroFrequencies, own.zeroBelow, frequency);
        coding.zeroBelowRise[i] = between(zeroFrequencies, own.zeroBelowRise, frequency);
    }
    coding.mostZeroBelow = tuned.mostZeroBelow;
    coding.roundUpFrom = tuned.roundUpFrom;
    coding.roundUpRise = tuned.roundUpRise;
    return coding;
}

ComponentCoding codingOf(JpegComponent component, int quality, bool hasFullChroma)
{
    constexpr int best = 100;
    if (quality >= best) return nearlyLossless();
    const TunedCoding& tuned = hasFullChroma ? fullChromaCoding : halvedChromaCoding;
    return scaledCoding(tuned, component,
                        between(tuned.qualities, tuned.scales, static_cast<float>(quality)));
}

std::vector<ComponentCoding> codingsOf(int components, int quality, bool hasFullChroma)
{
    std::vector<ComponentCoding> codings{codingOf(JpegComponent::brightness, quality, hasFullChroma)};
    if (components == 1) return codings;
    for (const JpegComponent component : {JpegComponent::blueDifference, JpegComponent::redDifference})
        codings.push_back(codingOf(component, quality, hasFullChroma));
    return codings;
}

} // namespace lumora
