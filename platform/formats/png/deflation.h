// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Streams in the format of zlib. Any thread; throws std::bad_alloc.
#pragma once

#include "png/deflate_pieces.h"

#include <cstddef>

namespace lumora {

// Which repetitions are replaced, from the quickest search to the slowest: none, so that codes alone save;
// bytes equal to the one before; many, to compare; nearly all that save anything; and all of them, which is
// for little data.
enum class Search { none, runs, trial, usual, thorough };

Status deflate(const PixelRows& rows, Search search, const StreamTaker& take);
std::size_t deflatedSize(const PixelRows& rows, Search search);

} // namespace lumora
