// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heic_quality.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumora {
namespace {

struct Point
{
    double quality;
    double encoderQuality;
};

// Where HEIC and JPEG have the same distance to the original by butteraugli (3-norm), in the mean of six
// photographs (docs/performance.md); from 90 on both store the colours at full resolution. The ends are
// chosen.
constexpr std::array<Point, 10> points{{{1, 10},
                                        {30, 32},
                                        {45, 36.5},
                                        {60, 40},
                                        {75, 45},
                                        {85, 51.5},
                                        {89, 54},
                                        {90, 55.5},
                                        {95, 65.5},
                                        {100, 100}}};

} // namespace

int encoderQualityOf(int quality)
{
    const auto* const upper =
        std::ranges::find_if(points, [quality](const Point& point) { return point.quality >= quality; });
    if (upper == points.begin()) return static_cast<int>(points.front().encoderQuality);
    const Point& high = upper == points.end() ? points.back() : *upper;
    const Point& low = *(upper - 1);
    const double share = std::min(1.0, (quality - low.quality) / (high.quality - low.quality));
    return static_cast<int>(std::lround(std::lerp(low.encoderQuality, high.encoderQuality, share)));
}

} // namespace lumora
