// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/forward_dct.h"

#include "pixels/vector_clones.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace lumora {
namespace {

// Eight columns at once.
using Lanes = std::array<float, 8>;

constexpr float cosine2 = 0.923879533F; // of 2, 4 and 6 sixteenths of pi
constexpr float cosine4 = 0.707106781F;
constexpr float cosine6 = 0.382683433F;

void transformLanes(std::array<Lanes, 8>& d)
{
    for (std::size_t i = 0; i < 8; ++i) {
        const float sum0 = d[0][i] + d[7][i];
        const float sum1 = d[1][i] + d[6][i];
        const float sum2 = d[2][i] + d[5][i];
        const float sum3 = d[3][i] + d[4][i];
        const float difference0 = d[0][i] - d[7][i];
        const float difference1 = d[1][i] - d[6][i];
        const float difference2 = d[2][i] - d[5][i];
        const float difference3 = d[3][i] - d[4][i];

        const float outer = sum0 + sum3;
        const float inner = sum1 + sum2;
        const float outerSlope = sum0 - sum3;
        const float turned = (sum1 - sum2 + outerSlope) * cosine4;
        d[0][i] = outer + inner;
        d[4][i] = outer - inner;
        d[2][i] = outerSlope + turned;
        d[6][i] = outerSlope - turned;

        const float low = difference3 + difference2;
        const float high = difference1 + difference0;
        const float middle = (difference2 + difference1) * cosine4;
        const float shared = (low - high) * cosine6;
        const float lowTurned = low * (cosine2 - cosine6) + shared;
        const float highTurned = high * (cosine2 + cosine6) + shared;
        const float before = difference0 + middle;
        const float after = difference0 - middle;
        d[1][i] = before + highTurned;
        d[7][i] = before - highTurned;
        d[5][i] = after + lowTurned;
        d[3][i] = after - lowTurned;
    }
}

std::array<Lanes, 8> transposed(const std::array<Lanes, 8>& block)
{
    std::array<Lanes, 8> result;
    for (std::size_t y = 0; y < 8; ++y) {
        for (std::size_t x = 0; x < 8; ++x)
            result[x][y] = block[y][x];
    }
    return result;
}

} // namespace

LUMORA_VECTOR_CLONES void forwardDct(const std::array<const float*, 8>& rows, DctBlock& frequencies)
{
    std::array<Lanes, 8> block;
    for (std::size_t y = 0; y < 8; ++y) {
        for (std::size_t x = 0; x < 8; ++x)
            block[y][x] = rows[y][x];
    }
    transformLanes(block);
    block = transposed(block);
    transformLanes(block);
    for (std::size_t u = 0; u < 8; ++u) {
        for (std::size_t v = 0; v < 8; ++v)
            frequencies[u * 8 + v] = block[u][v];
    }
}

float dctScale(int u, int v)
{
    const auto along = [](int k) {
        return k == 0 ? 1 : std::numbers::sqrt2 * std::cos(k * std::numbers::pi / 16);
    };
    return static_cast<float>(8 * along(u) * along(v));
}

} // namespace lumora
