// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Every count has a short text that begins with at most three digits, and its negative has the same after a
// minus.
#include "fuzz/fuzzing.h"
#include "system/byte_count_text.h"

#include <cstring>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using lumora::byteCountText;
    using lumora::fuzz::require;
    std::int64_t bytes = 0;
    if (size < sizeof bytes) return 0;
    std::memcpy(&bytes, data, sizeof bytes);
    const std::string text = byteCountText(bytes, ",");
    require(text.size() <= std::strlen("-999,99 bytes"));
    require(text.find_first_not_of("-0123456789") <= 4 || bytes == 0);
    if (bytes > 0) require(byteCountText(-bytes, ",") == "-" + text);
    return 0;
}
