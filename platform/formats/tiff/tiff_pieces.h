// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a TIFF file says where all of its picture lies. Thread-safe for different files.
#pragma once

#include "tiff/tiff_file.h"

namespace lumora {

// False when a strip or a tile was never written, or when the file gives uncompressed rows fewer bytes than
// they take: the library would read what lies at the beginning of the file in their place.
bool hasAllPieces(const TiffFile& file);

} // namespace lumora
