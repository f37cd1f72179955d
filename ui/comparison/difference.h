// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where two pictures differ. Pure function.
#pragma once

#include <QImage>

namespace lumora {

// How many times as strong as they are differences are shown.
inline constexpr int differenceGain = 8;

// Black where two pictures of one size, in ARGB32_Premultiplied, are the same; elsewhere the amplified
// difference of each colour.
QImage amplifiedDifference(const QImage& left, const QImage& right);

} // namespace lumora
