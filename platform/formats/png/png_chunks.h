// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The pieces that a PNG file is made of. Any thread.
#pragma once

#include "format_io.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace lumora {

// A zlib stream. Throws std::bad_alloc.
std::string deflated(std::string_view text);
// Four bytes, the most significant first.
std::string bigEndian(std::size_t value);
// `type` is the four letters of the chunk.
void appendChunk(Bytes& png, std::string_view type, std::string_view data);
// The same into the file. Fails for more data than a chunk can hold, too.
Status appendChunk(OutputFile& png, std::string_view type, std::string_view data);

} // namespace lumora
