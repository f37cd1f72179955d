// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "file_pieces.h"
#include "formats/left_out.h"

#include <optional>

namespace lumora {

// What is left of an open PNG. Absent for an animation, which would go on to move, and for a file that ends
// before its end chunk. Any thread; throws std::bad_alloc.
std::optional<FilePieces> pngPieces(int descriptor, const LeftOut& leftOut);

} // namespace lumora
