// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Streams in the format of zlib. Any thread; throws std::bad_alloc.
#pragma once

#include "png/deflate_pieces.h"

#include <cstddef>

namespace lumora {

// Which repetitions are replaced, from the quickest search to the slowest: none, so that codes alone save;
// bytes equal to the one before; and more and more of all.
enum class Search { none, runs, trial, deep, usual, thorough };

Status deflate(ByteSpan data, Search search, const StreamTaker& take);
std::size_t deflatedSize(ByteSpan data, Search search);

} // namespace lumora
