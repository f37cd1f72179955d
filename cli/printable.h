// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Text of unknown origin (file names, an encoder's words) as one harmless line on a terminal. Thread-safe.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace lumora::cli {

// Control characters, line separators and direction overrides become "\n", "\t", "\xNN" or "\u{NNNN}", bytes
// that are not UTF-8 become "\xNN"; everything else stays. For people: a backslash is not doubled.
std::string printable(std::string_view text);

// At most `limit` characters, the last one "…" when some were cut. Expects printable text; cuts between
// characters.
std::string elided(std::string_view text, std::size_t limit);

} // namespace lumora::cli
