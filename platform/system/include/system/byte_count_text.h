// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes of files as people read them. Thread-safe.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace lumora {

// Decimal units: "Zero KB", "1 byte", "999 bytes", "532 KB", "1.2 MB", "3.45 GB", up to EB. At most no
// fraction digit for KB, one for MB, two from GB; zeros at the end are dropped. Rounded half up, and the unit
// is chosen after rounding: 999,950 bytes are "1 MB". A negative count is "-" before the text of its absolute
// value.
std::string byteCountText(std::int64_t bytes, std::string_view decimalSeparator);

// With the decimal separator of the C locale in force.
std::string byteCountText(std::int64_t bytes);

} // namespace lumora
