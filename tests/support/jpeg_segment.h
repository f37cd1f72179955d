// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace lumora::test {

// With the marker and the length before the content.
inline std::string jpegSegment(unsigned char marker, const std::string& content)
{
    const std::size_t length = content.size() + 2;
    return std::string{'\xFF', static_cast<char>(marker), static_cast<char>(length >> 8U),
                       static_cast<char>(length & 0xFFU)} +
           content;
}

} // namespace lumora::test
