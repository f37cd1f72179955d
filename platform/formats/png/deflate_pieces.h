// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a picture in few bytes: of all ways to write them as single bytes and repetitions, one that
// takes about the fewest bits. Long data is compressed piece by piece, so that several processors can work on
// it, into what is one stream nevertheless (RFC 1950 and 1951). What comes out does not depend on how many
// did. Any thread; throws std::bad_alloc.
#pragma once

#include "png/match_finder.h"
#include "system/result.h"

#include <functional>

namespace lumora {

// Takes the stream in one piece or several.
using StreamTaker = std::function<Status(ByteSpan piece)>;

Status deflateSideBySide(const PixelRows& rows, const StreamTaker& take);

} // namespace lumora
