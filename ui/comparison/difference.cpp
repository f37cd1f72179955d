// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/difference.h"

#include <algorithm>
#include <cstdlib>

namespace lumora {
namespace {

// Byte by byte, which compilers do many at once; the difference is opaque.
void subtractRow(const uchar* left, const uchar* right, uchar* out, qsizetype bytes)
{
    for (qsizetype i = 0; i < bytes; ++i)
        out[i] = static_cast<uchar>(std::min(255, std::abs(left[i] - right[i]) * differenceGain));
    for (qsizetype i = 3; i < bytes; i += 4)
        out[i] = 255;
}

} // namespace

QImage amplifiedDifference(const QImage& left, const QImage& right)
{
    constexpr qsizetype pixelBytes = 4;
    QImage difference(left.size(), QImage::Format_RGB32);
    for (int y = 0; y < difference.height(); ++y)
        subtractRow(left.constScanLine(y), right.constScanLine(y), difference.scanLine(y),
                    difference.width() * pixelBytes);
    return difference;
}

} // namespace lumora
