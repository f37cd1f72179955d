// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The first picture of a HEIF file.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

#include <cstdint>

namespace lumora {

// As FormatReader::load.
Result<VipsImagePtr> loadHeif(int descriptor);

// As FormatReader::heldBytes.
std::int64_t heifDecodingBytes(_VipsImage* image);

} // namespace lumora
