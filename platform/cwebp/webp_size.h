// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <utility>

namespace lumora {

// Width and height in pixels of an open WebP file, read from its first chunk; absent when the file is shorter
// or longer than its header says, or no WebP. Layout: RFC 9649. The descriptor's position stays where it is.
// Any thread.
std::optional<std::pair<std::int64_t, std::int64_t>> webpSize(int descriptor);

} // namespace lumora
