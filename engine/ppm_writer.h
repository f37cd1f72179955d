// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The encoder's input: a binary PPM file ("P6", 8 bits a component).
#pragma once

#include "pixels/image.h"

#include <filesystem>

namespace lumora::ImageOptimizer {

// Writes the picture in sRGB colours, top row first, complete or not at all. There is no alpha in the file:
// the colours written are the premultiplied ones, so a transparent pixel is black. Throws
// cannotCreateDestination or cannotFinalize with this URL.
void writePPM(const Image& image, const std::filesystem::path& url);

} // namespace lumora::ImageOptimizer
