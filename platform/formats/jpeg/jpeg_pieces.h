// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "file_pieces.h"
#include "formats/left_out.h"

#include <optional>

namespace lumora {

// What is left of an open JPEG: its tables and its coded data as they are. Absent for a file that is no sound
// sequence of segments up to its end marker, and for one whose further pictures would not be found any more.
// Any thread; throws std::bad_alloc.
std::optional<FilePieces> jpegPieces(int descriptor, const LeftOut& leftOut);

} // namespace lumora
