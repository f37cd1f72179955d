// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes that are UTF-8 for the most part, as file names are. Thread-safe.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

struct CodePoint
{
    char32_t value;
    std::size_t length; // in bytes
};

// The character that the text begins with; absent when its first byte begins no well-formed sequence
// (overlong forms, surrogates and values above U+10FFFF are not well-formed). The text is not empty.
std::optional<CodePoint> firstCodePoint(std::string_view text);

// Whether the text consists of well-formed sequences alone, as an empty one does. A NUL is one.
bool isUtf8(std::string_view text);

// The value is at most U+10FFFF and no surrogate.
void appendUtf8(std::string& text, char32_t value);

} // namespace lumora
