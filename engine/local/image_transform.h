// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Turning, reducing and recolouring of one picture: what is to be done is decided here, the platform does it.
#pragma once

#include "formats/image_source.h"
#include "pixels/image.h"
#include "records/optimizer_settings.h"

namespace lumora::ImageOptimizer {

// The picture that stands upright; the fallback as stored when the source names no turn.
Image orientedImage(const ImageSource& source, const Image& fallback);

// In (0, 1]: how far the settings reduce a picture of this size in pixels. 1 means not at all; pictures never
// grow.
double scaleFactor(std::int64_t width, std::int64_t height, const OptimizerSettings& settings);

// Whether a picture is drawn anew with this factor; otherwise it keeps its depth and model.
bool isRedrawn(double factor, const OptimizerSettings& settings);

// The final picture: the very image that came in when nothing is to change, otherwise 8-bit RGBA at the
// reduced size (products truncated, at least 1) in the colour space of the settings, whose rows are still to
// be drawn. A good picture that cannot be redrawn comes back as it is. Throws unreadableImage when it turns
// out damaged, and PlatformError when memory is short.
Image transformedImage(const Image& image, const OptimizerSettings& settings);

} // namespace lumora::ImageOptimizer
