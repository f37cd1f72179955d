// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/block_quantizer.h"

#include "jpeg/zigzag.h"
#include "pixels/vector_clones.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace lumora {
namespace {

// Where the transform's result has what a file tells first, second and so on.
constexpr auto places = [] {
    std::array<std::uint8_t, 64> transposed{};
    std::ranges::transform(zigzag, transposed.begin(),
                           [](int place) { return static_cast<std::uint8_t>(place % 8 * 8 + place / 8); });
    return transposed;
}();

} // namespace

BlockQuantizer::BlockQuantizer(const ComponentCoding& coding)
    : m_mostZeroBelow(coding.mostZeroBelow), m_roundUpFrom(coding.roundUpFrom),
      m_roundUpRise(coding.roundUpRise)
{
    for (std::size_t u = 0; u < 8; ++u) {
        for (std::size_t v = 0; v < 8; ++v) {
            const std::size_t from = v * 8 + u;
            const std::size_t to = u * 8 + v;
            const float scale = dctScale(static_cast<int>(u), static_cast<int>(v));
            m_inverseSteps[to] = 1 / (static_cast<float>(coding.steps[from]) * scale);
            m_zeroBelow[to] = coding.zeroBelow[from];
            m_zeroBelowRise[to] = coding.zeroBelowRise[from];
        }
    }
}

LUMORA_VECTOR_CLONES void BlockQuantizer::quantize(const DctBlock& frequencies, float activity,
                                                   std::int16_t* coefficients) const
{
    const float added = 1 - m_roundUpFrom - m_roundUpRise * std::max(activity, 0.0F);
    constexpr float leastZeroBelow = 0.5F; // nearer to zero than to a step
    std::array<std::int16_t, 64> values;
    for (std::size_t i = 0; i < 64; ++i) {
        const float value = frequencies[i] * m_inverseSteps[i];
        const float size = std::abs(value);
        const float zeroBelow = std::min(
            std::max(m_zeroBelow[i] + m_zeroBelowRise[i] * activity, leastZeroBelow), m_mostZeroBelow);
        const float steps = std::max(size + added, 1.0F);
        const float kept = size < zeroBelow ? 0 : steps;
        values[i] = static_cast<std::int16_t>(static_cast<int>(std::copysign(kept, value)));
    }
    // Brightness and colour of the whole block are always rounded to the nearest.
    values[0] = static_cast<std::int16_t>(std::lround(frequencies[0] * m_inverseSteps[0]));
    for (std::size_t i = 0; i < 64; ++i)
        coefficients[i] = values[places[i]];
}

} // namespace lumora
