// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Colour at half the resolution, as decoders will see it again: they draw straight lines between its samples,
// so these are sharpened against that, and brightness makes up for the light that coloured edges would gain
// or lose (Ström, Samuelsson and Dovstam, "Luma adjustment for high dynamic range video", DCC 2016). Any
// thread.
#pragma once

namespace lumora {

// The means of squares of four samples.
void halveRows(const float* upper, const float* lower, int halfWidth, float* half);

// What becomes the means again when a decoder has drawn its lines and means are taken of them, to first
// order. Rows have a sample more on each side.
void sharpenRow(const float* above, const float* row, const float* below, int width, float* sharp);

// A row of halved colour differences at full resolution, by the weights of a decoder: the row of the picture
// lies between `near` and, a fourth as heavy, `far`.
void doubleRow(const float* near, const float* far, int halfWidth, float* full);

// Colour differences of a row.
struct ColorRow
{
    const float* blue;
    const float* red;
};

// Changes the brightness of a row of sRGB colours that will be shown in other colours than its own. `width`
// is a multiple of 16.
void keepLight(const ColorRow& own, const ColorRow& shown, int width, float* luma);

} // namespace lumora
