// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pieces of an open file, whose position stays where it is. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

// Absent where the file ends before or cannot be read. More memory than a page is set aside only for bytes
// that are there.
std::optional<std::string> bytesAt(int descriptor, std::uint64_t offset, std::size_t size);

// The number in `size` bytes of the text from `at` on, at most 8; 0 beyond its end.
std::uint64_t bigEndianAt(std::string_view bytes, std::size_t at, std::size_t size);
std::uint64_t littleEndianAt(std::string_view bytes, std::size_t at, std::size_t size);

} // namespace lumora
