// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The external encoder's input: a binary PPM file ("P6", 8 bits a component). Any thread.
#pragma once

#include "cwebp/ppm_error.h"
#include "pixels/image.h"
#include "system/output_file.h"
#include "system/result.h"

namespace lumora {

// Writes the picture in sRGB colours, row by row as they come. There is no alpha in the file: the colours
// written are the premultiplied ones, so a transparent pixel is black.
Result<Done, PpmError> writePpm(const Image& image, OutputFile& file);

} // namespace lumora
