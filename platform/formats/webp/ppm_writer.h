// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The encoder's input: a binary PPM file ("P6", 8 bits a component).
#pragma once

#include "formats/cwebp_error.h"
#include "pixels/image.h"
#include "system/result.h"

#include <filesystem>

namespace lumora {

// Writes the picture in sRGB colours, row by row as they come, complete or not at all. There is no alpha in
// the file: the colours written are the premultiplied ones, so a transparent pixel is black.
Result<Done, CwebpError> writePpm(const Image& image, const std::filesystem::path& file);

} // namespace lumora
