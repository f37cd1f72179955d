// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Long data compressed piece by piece, so that several processors can work on it, into what is one stream
// nevertheless (RFC 1950 and 1951). What comes out does not depend on how many did. Any thread; throws
// std::bad_alloc.
#pragma once

#include "system/result.h"

#include <cstdint>
#include <functional>
#include <span>

namespace lumora {

using ByteSpan = std::span<const std::uint8_t>;
// Takes the stream in one piece or several.
using StreamTaker = std::function<Status(ByteSpan piece)>;

// `level` is libdeflate's, 1 to 12.
Status deflateSideBySide(ByteSpan data, int level, const StreamTaker& take);

} // namespace lumora
